#include "engine/log.h"
#include "functions/base/functions.h"
#include "functions/base/detail/string_ops.h"

namespace api::base {

const Parameters& FunctionStringGet::parameters() {
  static const Parameters list = engine::joined({engine::variable<&FunctionStringGet::var_>(L"var", Need::NonEmpty),
       engine::text<&FunctionStringGet::value_>(L"value", Need::NonEmpty)}, spanParameters());
  return list;
}

void FunctionStringGet::execute() {
  engine::log(L"StringGet variable %s, from %d, maxCount %d or to %s", var_.c_str(), fromIndex_, maxCount_,
              toAnyChar_.c_str());
  variables().set(var_, spanOf(expand(value_), fromIndex_, maxCount_, toAnyChar_));
}

}  // namespace api::base
