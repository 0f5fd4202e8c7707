#include "engine/log.h"
#include "functions/base/functions.h"
#include "functions/base/detail/string_ops.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"StringTrim variable %s, with %s"};

}  // namespace

const Parameters& FunctionStringTrim::parameters() {
  static const Parameters list = {engine::variable<&FunctionStringTrim::var_>(L"var", Need::NonEmpty),
                                  engine::literal<&FunctionStringTrim::chars_>(L"chars", Need::NonEmpty)};
  return list;
}

void FunctionStringTrim::execute() {
  engine::log(kStart, var_.c_str(), chars_.c_str());
  engine::VariableText* text = variables().findText(var_);
  if (!text) {
    variables().set(var_, L"");  // an unknown variable ends up empty
    return;
  }
  trimChars(*text, chars_);
}

const engine::TagDoc FunctionStringTrim::doc{
    L"Strips every character that is one of `chars` (taken as written, not expanded) from both ends of the variable `var`. A missing variable is set to the empty text.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<assign var=\"dir\" value=\" C:\\Program Files\\App\\ \"/>\n<stringTrim var=\"dir\" chars=\" \\\"/>"};

}  // namespace api::base
