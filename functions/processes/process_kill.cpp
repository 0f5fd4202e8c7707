#include <windows.h>

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
    const platform::UniqueProcess process = platform::openProcess(id, PROCESS_TERMINATE, error);
    if (!process) {
      engine::log(L"Cannot open process with pid %d for kill. Error:%d", id, error);
      continue;
    }
    error = platform::terminateProcess(process.get());
    if (error == 0) continue;
    engine::log(L"Cannot terminate process %d. Error:%d", id, error);
    if (kept == 0) kept = error;
  }
  end(kept);
}

}  // namespace api::processes
