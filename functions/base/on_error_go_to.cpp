#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionOnErrorGoTo::parameters() {
  static const Parameters list = {engine::label<&FunctionOnErrorGoTo::target_>(L"target")};
  return list;
}

// An empty target switches the global error target off.
void FunctionOnErrorGoTo::execute() { runtime().errorTarget = target_; }

}  // namespace api::base
