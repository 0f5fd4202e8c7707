#include "engine/log.h"
#include "functions/base/functions.h"
#include "functions/base/string_ops.h"

namespace api::base {

bool readStringSpan(const engine::Attributes& attributes, StringSpan& span);

bool FunctionStringDelete::readAttributes() {
  return readText(L"var", var_, engine::Need::NonEmpty) && readStringSpan(attributes(), span_);
}

void FunctionStringDelete::execute() {
  engine::log(L"StringDelete variable %s, from %d, maxCount %d or to %s", var_.c_str(), span_.fromIndex, span_.maxCount,
              span_.toAnyChar.c_str());
  // In place: taking a loop's item off the front of its list costs the item.
  if (engine::VariableText* text = variables().findText(var_))
    deleteSpan(*text, span_.fromIndex, span_.maxCount, span_.toAnyChar);
}

}  // namespace api::base
