#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionAddString::parameters() {
  static const Parameters list = {engine::variable<&FunctionAddString::var_>(L"var", Need::NonEmpty),
                                  engine::text<&FunctionAddString::value_>(L"value", Need::NonEmpty)};
  return list;
}

void FunctionAddString::execute() {
  const std::wstring value = expand(value_);
  engine::log(L"AddString value '%s' to the variable %s", value.c_str(), var_.c_str());
  variables().set(var_, variables().get(var_) + value);
}

}  // namespace api::base
