#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

bool FunctionAddString::readAttributes() {
  return readText(L"var", var_, engine::Need::NonEmpty) && readText(L"value", value_, engine::Need::NonEmpty);
}

void FunctionAddString::execute() {
  const std::wstring value = expand(value_);
  engine::log(L"AddString value '%s' to the variable %s", value.c_str(), var_.c_str());
  variables().set(var_, variables().get(var_) + value);
}

}  // namespace api::base
