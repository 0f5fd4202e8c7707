#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"Assign value '%s' to the variable %s"};

}  // namespace

const Parameters& FunctionAssign::parameters() {
  static const Parameters list = {engine::variable<&FunctionAssign::var_>(L"var", Need::NonEmpty),
                                  engine::text<&FunctionAssign::value_>(L"value")};
  return list;
}

void FunctionAssign::execute() {
  std::wstring value = expand(value_);
  engine::log(kStart, value.c_str(), var_.c_str());
  variables().set(var_, std::move(value));
}

const engine::TagDoc FunctionAssign::doc{
    L"Sets the variable `var` (its name taken as written) to `value`, expanded when it runs; an empty `value` empties it.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<assign var=\"appdir\" value=\"C:\\Program Files\\App\"/>"};

}  // namespace api::base
