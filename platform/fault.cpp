#include "platform/fault.h"

#include <array>

namespace platform {
namespace {

struct Fault {
  unsigned calls = 0;
  unsigned failFrom = 0;  // 0: never
  uint32_t error = 0;
};

std::array<Fault, static_cast<size_t>(Call::Count)> faults;

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

}  // namespace platform
