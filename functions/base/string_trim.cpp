#include "engine/log.h"
#include "functions/base/functions.h"
#include "functions/base/string_ops.h"

namespace api::base {

bool FunctionStringTrim::readAttributes() {
  return readText(L"var", var_, engine::Need::NonEmpty) && readText(L"chars", chars_, engine::Need::NonEmpty);
}

void FunctionStringTrim::execute() {
  engine::log(L"StringTrim variable %s, with %s", var_.c_str(), chars_.c_str());
  engine::VariableText* text = variables().findText(var_);
  if (!text) {
    variables().set(var_, L"");  // an unknown variable ends up empty
    return;
  }
  trimChars(*text, chars_);
}

}  // namespace api::base
