#include <algorithm>
#include <vector>

#include "engine/log.h"
#include "functions/processes/detail/process_name.h"
#include "functions/processes/functions.h"
#include "platform/environment.h"
#include "platform/errors.h"
#include "platform/processes.h"

namespace api::processes {

const Parameters& FunctionProcessKill::parameters() {
  static const Parameters list = {engine::text<&FunctionProcessKill::name_>(L"name", Need::NonEmpty)};
  return list;
}

namespace {

// The interpreter's exit code when a processKill names the interpreter itself
// (the process aborted): a run cut short must not read as a success.
constexpr uint32_t kEndedItselfExitCode = platform::kErrorProcessAborted;

// Ends one process with `exitCode`: 0, or the code of a termination that failed.
// A process that cannot be opened is only logged.
uint32_t endProcess(uint32_t id, const std::wstring& name, uint32_t exitCode) {
  uint32_t error = 0;
  const platform::UniqueProcess process = platform::openProcessNamed(id, name, platform::ProcessAccess::Terminate, error);
  if (!process) {
    engine::log(L"Cannot open process with pid %d for kill. Error:%d", id, error);
    return 0;
  }
  error = platform::terminateProcess(process, exitCode);
  if (error != 0) engine::log(L"Cannot terminate process %d. Error:%d", id, error);
  return error;
}

}  // namespace

// Ends every matching process without waiting for it to go; the first failed
// termination is the error. The interpreter itself, when it matches, goes
// last, once every line logged so far is on standard output (the trace file
// is flushed after every line).
void FunctionProcessKill::execute() {
  clearResult();
  const std::wstring name = detail::normaliseProcessName(expand(name_));
  engine::log(L"processKill function called for '%s'", name.c_str());
  std::vector<uint32_t> ids = detail::processesNamed(name);
  const auto self = std::ranges::find(ids, platform::processId());
  const bool endsItself = self != ids.end();
  if (endsItself) ids.erase(self);
  engine::flushLogBeforeWait();
  uint32_t kept = 0;
  for (const uint32_t id : ids) {
    const uint32_t error = endProcess(id, name, 0);
    if (kept == 0) kept = error;
  }
  if (endsItself) {
    engine::flushLogBeforeWait();
    const uint32_t error = endProcess(platform::processId(), name, kEndedItselfExitCode);
    if (kept == 0) kept = error;
  }
  end(kept);
}

const engine::TagDoc FunctionProcessKill::doc{
    L"Ends every running process of the name `name` (expanded when it runs and matched as in `processWait`) with exit code 0, without waiting for it to go. A process that cannot be opened is only logged; one that cannot be ended is logged, and the others are still ended. When the name matches the interpreter itself, the others are ended first, every line logged so far is written out, and the interpreter ends with exit code 1067, so the run does not read as a success.",
    L"processKill function called for '%s'\nCannot open process with pid %d for kill. Error:%d\nCannot terminate process %d. Error:%d\nprocessKill function end with %s. err:'%s'",
    L"Error text: the Windows code of the first process that could not be ended (`5` access denied). None running, or only processes that cannot be opened, is success.",
    L"<processKill name=\"C:\\Program Files\\App\\app.exe\"/>\n<processWait name=\"C:\\Program Files\\App\\app.exe\" waittime=\"10000\"/>"};

}  // namespace api::processes
