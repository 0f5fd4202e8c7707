#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

bool FunctionAssign::readAttributes() {
  return readText(L"var", var_, engine::Need::NonEmpty) && readText(L"value", value_);
}

void FunctionAssign::execute() {
  std::wstring value = expand(value_);
  engine::log(L"Assign value '%s' to the variable %s", value.c_str(), var_.c_str());
  variables().set(var_, std::move(value));
}

}  // namespace api::base
