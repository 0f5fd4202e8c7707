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

struct Kind {
  Call call;
  std::string_view name;
  bool changes;  // the call changes the machine, rather than reading it
};

constexpr bool kReads = false;
constexpr bool kChanges = true;

// Every kind: its name on the command line, and whether it changes the machine.
// Calls without a fault point, because they cannot fail in a way a caller
// could act on: text work (UTF conversion, formatting, full paths, path
// comparison); the clock, sleeping and the random number; the program's own
// path and id, the current directory read and the Windows version; enabling the
// process's privileges and sharing the thread's user with a library's worker
// (best effort by design); standard output and the debugger (the log's own
// destinations); positioning within or sizing an open file; walking a process
// or module snapshot already taken; the guard around a library's worker
// thread once it exists; closing handles; and the cleanup after a failure (a
// file cut back, a temporary file removed).
constexpr std::array<Kind, static_cast<size_t>(Call::Count)> kKinds = {{
    {Call::Create, "create", kChanges},
    {Call::Write, "write", kChanges},
    {Call::Flush, "flush", kChanges},
    {Call::Close, "close", kChanges},
    {Call::Replace, "replace", kChanges},
    {Call::Copy, "copy", kChanges},
    {Call::Move, "move", kChanges},
    {Call::Delete, "delete", kChanges},
    {Call::CreateDirectory, "mkdir", kChanges},
    {Call::RemoveDirectory, "rmdir", kChanges},
    {Call::TraceWrite, "trace", kChanges},
    {Call::Open, "open", kReads},
    {Call::Read, "read", kReads},
    {Call::List, "list", kReads},
    {Call::Attributes, "attributes", kReads},
    {Call::AttributeWrite, "attrwrite", kChanges},
    {Call::RegistryOpen, "regopen", kReads},
    {Call::RegistryQuery, "regquery", kReads},
    {Call::RegistryEnum, "regenum", kReads},
    {Call::RegistryWrite, "regwrite", kChanges},
    {Call::RegistryKey, "regkey", kChanges},
    {Call::Process, "process", kChanges},
    {Call::Snapshot, "snapshot", kReads},
    {Call::Wait, "wait", kReads},
    {Call::Terminate, "terminate", kChanges},
    {Call::ServiceManager, "scm", kReads},
    {Call::ServiceOpen, "svcopen", kReads},
    {Call::ServiceQuery, "svcquery", kReads},
    {Call::ServiceStart, "svcstart", kChanges},
    {Call::ServiceControl, "svccontrol", kChanges},
    {Call::ServiceCreate, "svccreate", kChanges},
    {Call::ServiceDelete, "svcdelete", kChanges},
    {Call::ProfileRead, "iniread", kReads},
    {Call::ProfileWrite, "iniwrite", kChanges},
    {Call::Download, "download", kChanges},  // saves the file
    {Call::Signature, "signature", kReads},
    {Call::Library, "library", kChanges},  // runs code nobody here knows
    {Call::Logon, "logon", kChanges},
    {Call::Environment, "environment", kReads},
    {Call::WorkingDirectory, "workdir", kReads},  // the process's own
}};

constexpr bool inEnumOrder() {
  for (size_t i = 0; i < kKinds.size(); ++i)
    if (kKinds[i].call != static_cast<Call>(i) || kKinds[i].name.empty()) return false;
  return true;
}
static_assert(inEnumOrder(), "one row per kind, in the order of enum Call");

const Kind& kind(Call call) { return kKinds[static_cast<size_t>(call)]; }

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

unsigned callCount(Call call) { return faults[static_cast<size_t>(call)].calls; }

std::string_view callName(Call call) { return kind(call).name; }

bool changesMachine(Call call) { return kind(call).changes; }

std::optional<Call> callNamed(std::string_view name) {
  for (const Kind& k : kKinds)
    if (k.name == name) return k.call;
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
