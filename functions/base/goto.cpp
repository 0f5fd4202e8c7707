#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionGoTo::parameters() {
  static const Parameters list = {engine::label<&FunctionGoTo::target_>(L"target")};
  return list;
}

}  // namespace api::base
