#include "engine/integer.h"
#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionAddInt::parameters() {
  static const Parameters list = {engine::variable<&FunctionAddInt::var_>(L"var", Need::NonEmpty),
                                  engine::text<&FunctionAddInt::value_>(L"value", Need::NonEmpty)};
  return list;
}

void FunctionAddInt::execute() {
  const std::wstring value = expand(value_);
  engine::log(L"AddInt value '%s' to the variable %s", value.c_str(), var_.c_str());
  // 32-bit addition that wraps around, as the scripts' counters always have.
  const uint32_t sum =
      static_cast<uint32_t>(engine::toInt(variables().get(var_))) + static_cast<uint32_t>(engine::toInt(value));
  variables().set(var_, std::to_wstring(static_cast<int32_t>(sum)));
}

}  // namespace api::base
