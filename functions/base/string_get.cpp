#include "engine/log.h"
#include "functions/base/functions.h"
#include "functions/base/string_ops.h"

namespace api::base {

bool readStringSpan(const engine::Attributes& attributes, StringSpan& span);

bool FunctionStringGet::readAttributes() {
  return readText(L"var", var_, engine::Need::NonEmpty) && readText(L"value", value_, engine::Need::NonEmpty) &&
         readStringSpan(attributes(), span_);
}

void FunctionStringGet::execute() {
  engine::log(L"StringGet variable %s, from %d, maxCount %d or to %s", var_.c_str(), span_.fromIndex, span_.maxCount,
              span_.toAnyChar.c_str());
  // A loop's `%forvar%` is read in place, not copied: each item costs only itself.
  std::wstring expanded;
  const std::wstring_view text = variables().expandView(value_, expanded);
  variables().set(var_, spanOf(text, span_.fromIndex, span_.maxCount, span_.toAnyChar));
}

}  // namespace api::base
