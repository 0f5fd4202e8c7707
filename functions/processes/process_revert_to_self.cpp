#include "engine/log.h"
#include "functions/processes/detail/impersonation.h"
#include "functions/processes/functions.h"

namespace api::processes {

// Without an impersonation this still succeeds: the thread acts as itself.
void FunctionProcessRevertToSelf::execute() {
  clearResult();
  engine::log(L"processRevertToSelf function called");
  end(detail::endImpersonation(runtime()));
}

}  // namespace api::processes
