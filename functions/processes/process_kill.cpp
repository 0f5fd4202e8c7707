#include <vector>

#include "engine/log.h"
#include "functions/processes/detail/process_name.h"
#include "functions/processes/functions.h"
#include "platform/processes.h"

namespace api::processes {

const Parameters& FunctionProcessKill::parameters() {
  static const Parameters list = {engine::text<&FunctionProcessKill::name_>(L"name", Need::NonEmpty)};
  return list;
}

// Ends every matching process without waiting for it to go. A process that
// cannot be opened is only logged; the first failed termination is the error.
void FunctionProcessKill::execute() {
  clearResult();
  const std::wstring name = detail::normaliseProcessName(expand(name_));
  engine::log(L"processKill function called for '%s'", name.c_str());
  uint32_t kept = 0;
  for (const uint32_t id : detail::processesNamed(name)) {
    uint32_t error = 0;
    const platform::UniqueProcess process =
        platform::openProcessNamed(id, name, platform::ProcessAccess::Terminate, error);
    if (!process) {
      engine::log(L"Cannot open process with pid %d for kill. Error:%d", id, error);
      continue;
    }
    error = platform::terminateProcess(process);
    if (error == 0) continue;
    engine::log(L"Cannot terminate process %d. Error:%d", id, error);
    if (kept == 0) kept = error;
  }
  end(kept);
}

const engine::TagDoc FunctionProcessKill::doc{
    L"Ends every running process of the name `name` (expanded when it runs and matched as in `processWait`) with exit code 0, without waiting for it to go. A process that cannot be opened is only logged; one that cannot be ended is logged, and the others are still ended.",
    L"processKill function called for '%s'\nCannot open process with pid %d for kill. Error:%d\nCannot terminate process %d. Error:%d\nprocessKill function end with %s. err:'%s'",
    L"Error text: the Windows code of the first process that could not be ended (`5` access denied). None running, or only processes that cannot be opened, is success.",
    L"<processKill name=\"C:\\Program Files\\App\\app.exe\"/>\n<processWait name=\"C:\\Program Files\\App\\app.exe\" waittime=\"10000\"/>"};

}  // namespace api::processes
