#include "functions/base/functions.h"

namespace api::base {

bool FunctionOnErrorGoTo::readAttributes() { return readText(L"target", target_); }

// An empty target switches the global error target off.
void FunctionOnErrorGoTo::execute() { runtime().errorTarget = target_; }

}  // namespace api::base
