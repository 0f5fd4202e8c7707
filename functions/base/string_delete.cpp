#include "engine/log.h"
#include "functions/base/functions.h"
#include "functions/base/detail/string_ops.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"StringDelete variable %s, from %d, maxCount %d or to %s"};

}  // namespace

const Parameters& FunctionStringDelete::parameters() {
  static const Parameters list = engine::joined({engine::variable<&FunctionStringDelete::var_>(L"var", Need::NonEmpty)}, spanParameters());
  return list;
}

void FunctionStringDelete::execute() {
  engine::log(kStart, var_.c_str(), fromIndex_, maxCount_, toAnyChar_.c_str());
  // In place: taking a loop's item off the front of its list costs the item.
  if (engine::VariableText* text = variables().findText(var_)) deleteSpan(*text, fromIndex_, maxCount_, toAnyChar_);
}

const engine::TagDoc FunctionStringDelete::doc{
    L"Deletes from the variable `var` what `stringGet` would take from it: up to `maxCount` characters from `fromIndex`, ending before the first character of `toAnyChar`, which stays. The attributes are read as for `stringGet`; a missing variable, or a `fromIndex` at or past the end, changes nothing.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<assign var=\"list\" value=\"a.dll;b.dll\"/>\n<stringDelete var=\"list\" fromIndex=\"0\" maxCount=\"-1\" toAnyChar=\";\"/>"};

}  // namespace api::base
