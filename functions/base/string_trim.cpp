#include "engine/log.h"
#include "functions/base/functions.h"
#include "functions/base/detail/string_ops.h"

namespace api::base {

const Parameters& FunctionStringTrim::parameters() {
  static const Parameters list = {engine::variable<&FunctionStringTrim::var_>(L"var", Need::NonEmpty),
                                  engine::literal<&FunctionStringTrim::chars_>(L"chars", Need::NonEmpty)};
  return list;
}

void FunctionStringTrim::execute() {
  engine::log(L"StringTrim variable %s, with %s", var_.c_str(), chars_.c_str());
  variables().set(var_, trimChars(variables().get(var_), chars_));
}

}  // namespace api::base
