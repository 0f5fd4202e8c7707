#include "functions/base/functions.h"

namespace api::base {

const Parameters& StringSpanFunction::spanParameters() {
  static const Parameters list = {engine::integer<&StringSpanFunction::fromIndex_>(L"fromIndex", Need::NonEmpty),
                                  engine::integer<&StringSpanFunction::maxCount_>(L"maxCount", Need::NonEmpty),
                                  engine::literal<&StringSpanFunction::toAnyChar_>(L"toAnyChar", Need::NonEmpty)};
  return list;
}

}  // namespace api::base
