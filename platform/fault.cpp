#include "platform/fault.h"

#include <array>
#include <charconv>

namespace platform {
namespace {

struct Fault {
  unsigned calls = 0;
  unsigned failFrom = 0;  // 0: never
  uint32_t error = 0;
};

std::array<Fault, static_cast<size_t>(Call::Count)> faults;

constexpr std::array<std::string_view, static_cast<size_t>(Call::Count)> kNames = {
    "create", "write", "flush", "close", "replace", "copy", "move", "delete", "mkdir", "rmdir", "trace",
    "scm", "svcquery", "terminate"};

template <class T>
bool parseNumber(std::string_view text, T& out) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

void failCall(Call call, unsigned nth, uint32_t error) {
  faults[static_cast<size_t>(call)] = Fault{0, nth, error};
}

void clearFaults() { faults = {}; }

uint32_t injectedFault(Call call) {
  Fault& fault = faults[static_cast<size_t>(call)];
  ++fault.calls;
  return fault.failFrom != 0 && fault.calls >= fault.failFrom ? fault.error : 0;
}

std::optional<Call> callNamed(std::string_view name) {
  for (size_t i = 0; i < kNames.size(); ++i)
    if (kNames[i] == name) return static_cast<Call>(i);
  return std::nullopt;
}

bool failCallFromText(std::string_view spec) {
  const size_t first = spec.find(':');
  const size_t second = first == std::string_view::npos ? first : spec.find(':', first + 1);
  if (second == std::string_view::npos) return false;
  const std::optional<Call> call = callNamed(spec.substr(0, first));
  unsigned nth = 0;
  uint32_t error = 0;
  if (!call || !parseNumber(spec.substr(first + 1, second - first - 1), nth) || nth == 0 ||
      !parseNumber(spec.substr(second + 1), error) || error == 0)
    return false;
  failCall(*call, nth, error);
  return true;
}

}  // namespace platform
