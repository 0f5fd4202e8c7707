#include <windows.h>

#include <vector>

#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/processes/detail/process_name.h"
#include "functions/processes/functions.h"
#include "platform/processes.h"

namespace api::processes {

namespace {

constexpr engine::LogLine kStart{L"processKill function called for '%s'"};
constexpr engine::LogLine kCannotOpenProcessWith{L"Cannot open process with pid %d for kill. Error:%d"};
constexpr engine::LogLine kCannotTerminateProcessError{L"Cannot terminate process %d. Error:%d"};

}  // namespace

const Parameters& FunctionProcessKill::parameters() {
  static const Parameters list = {engine::text<&FunctionProcessKill::name_>(L"name", Need::NonEmpty)};
  return list;
}

// Ends every matching process without waiting for it to go. A process that
// cannot be opened is only logged; the first failed termination is the error.
void FunctionProcessKill::execute() {
  clearResult();
  const std::wstring name = detail::normaliseProcessName(expand(name_));
  engine::log(kStart, name.c_str());
  uint32_t kept = 0;
  for (const uint32_t id : detail::processesNamed(name)) {
    uint32_t error = 0;
    const platform::UniqueProcess process = platform::openProcessNamed(id, name, PROCESS_TERMINATE, error);
    if (!process) {
      engine::log(kCannotOpenProcessWith, id, error);
      continue;
    }
    error = platform::terminateProcess(process.get());
    if (error == 0) continue;
    engine::log(kCannotTerminateProcessError, id, error);
    if (kept == 0) kept = error;
  }
  endWith(kept);
}

const engine::TagDoc FunctionProcessKill::doc{
    L"Ends every running process of the name `name` (expanded when it runs and matched as in `processWait`) with exit code 0, without waiting for it to go. A process that cannot be opened is only logged; one that cannot be ended is logged, and the others are still ended.",
    {kStart, kCannotOpenProcessWith, kCannotTerminateProcessError, engine::kErrorEnd.as(L"processKill")},
    L"Error text: the Windows code of the first process that could not be ended (`5` access denied). None running, or only processes that cannot be opened, is success.",
    L"<processKill name=\"C:\\Program Files\\App\\app.exe\"/>\n<processWait name=\"C:\\Program Files\\App\\app.exe\" waittime=\"10000\"/>"};

}  // namespace api::processes
