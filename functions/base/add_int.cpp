#include "engine/integer.h"
#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

bool FunctionAddInt::readAttributes() {
  return readText(L"var", var_, engine::Need::NonEmpty) && readText(L"value", value_, engine::Need::NonEmpty);
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
