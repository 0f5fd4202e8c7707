#include "functions/families.h"
#include "functions/processes/functions.h"

namespace api::processes {

using engine::tag;

void registerFunctions(engine::FunctionRegistry& r) {
  static const engine::Tag tags[] = {
      tag<FunctionProcessStart>(L"processRun"),
      tag<FunctionProcessWait>(L"processWait"),
      tag<FunctionProcessKill>(L"processKill"),
      tag<FunctionProcessChangeWorkingDir>(L"processChangeWorkingDir"),
      tag<FunctionProcessImpersonateUser>(L"processImpersonateUser"),
      tag<FunctionProcessRevertToSelf>(L"processRevertToSelf"),
      tag<FunctionProcessEntrypoint>(L"processEntrypoint"),
  };
  r.add(tags);
}

}  // namespace api::processes
