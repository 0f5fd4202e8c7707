#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

void FunctionNothing::execute() { engine::log(L"Executing 'nothing' function"); }

}  // namespace api::base
