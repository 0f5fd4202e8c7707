#include "engine/log.h"
#include "functions/base/functions.h"
#include "functions/base/detail/string_ops.h"

namespace api::base {

const Parameters& FunctionStringDelete::parameters() {
  static const Parameters list = engine::joined({engine::variable<&FunctionStringDelete::var_>(L"var", Need::NonEmpty)}, spanParameters());
  return list;
}

void FunctionStringDelete::execute() {
  engine::log(L"StringDelete variable %s, from %d, maxCount %d or to %s", var_.c_str(), fromIndex_, maxCount_,
              toAnyChar_.c_str());
  std::wstring text = variables().get(var_);
  if (deleteSpan(text, fromIndex_, maxCount_, toAnyChar_)) variables().set(var_, std::move(text));
}

}  // namespace api::base
