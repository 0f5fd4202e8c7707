#include "functions/base/functions.h"

namespace api::base {

bool FunctionGoTo::readAttributes() { return readText(L"target", target_); }

}  // namespace api::base
