#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"AddString value '%s' to the variable %s"};

}  // namespace

const Parameters& FunctionAddString::parameters() {
  static const Parameters list = {engine::variable<&FunctionAddString::var_>(L"var", Need::NonEmpty),
                                  engine::text<&FunctionAddString::value_>(L"value", Need::NonEmpty)};
  return list;
}

void FunctionAddString::execute() {
  const std::wstring value = expand(value_);
  engine::log(kStart, value.c_str(), var_.c_str());
  variables().set(var_, variables().get(var_) + value);
}

const engine::TagDoc FunctionAddString::doc{
    L"Appends `value`, expanded when it runs, to the variable `var`; a missing variable counts as empty. `value` must not be empty as written.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<assign var=\"report\" value=\"updated:\"/>\n<addString var=\"report\" value=\" app.exe\"/>"};

}  // namespace api::base
