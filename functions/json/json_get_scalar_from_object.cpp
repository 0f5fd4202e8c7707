#include "engine/log_lines.h"
#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonGetScalarFromObject %s from handle %s and path %s"};
constexpr engine::LogLine kTheSpecifiedValueIs{L"jsonGetScalarFromObject the specified value is not a scalar"};

}  // namespace

const Parameters& FunctionJsonGetScalarFromObject::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetScalarFromObject::handle_>(L"handle"),
      engine::text<&FunctionJsonGetScalarFromObject::xpath_>(L"xpath"),
      engine::variable<&FunctionJsonGetScalarFromObject::var_>(L"var")};
  return list;
}

void FunctionJsonGetScalarFromObject::execute() {
  const std::wstring xpath = expand(xpath_);
  engine::log(kStart, var_.c_str(), handle_.c_str(), xpath.c_str());
  std::optional<helpers::JsonLocation> location = findObject(handle_);
  if (!location) {
    engine::log(helpers::kNotAnObjectStop, name(), handle_.c_str());
    return end(false);
  }
  // A missing key and a non-scalar value give the same message.
  if (!walkPath(*location, xpath) || !helpers::isScalar(*location->value)) {
    engine::log(kTheSpecifiedValueIs);
    return end(false);
  }
  variables().set(var_, helpers::scalarText(*location->value));
  end(true);
}

const engine::TagDoc FunctionJsonGetScalarFromObject::doc{
    L"Stores in `var` the boolean, number or string at the key path `xpath` (as in `jsonGetTypeFromObject`) below the object under `handle`: `true` or `false`, a number as `jsonSave` writes it, a string's text up to any NUL character.",
    {kStart, helpers::kNotAnObjectStop.as(L"jsonGetScalarFromObject"), kTheSpecifiedValueIs,
     engine::kSubjectEnd.as(L"jsonGetScalarFromObject")},
    L"True: `var` holds the value. False: `handle` holds no JSON object, the path is missing, or the value is an object, an array or `null`; `var` is unchanged.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonGetScalarFromObject handle=\"cfg\" xpath=\"server/port\" var=\"port\">\n  <onFalse><assign var=\"port\" value=\"443\"/></onFalse>\n</jsonGetScalarFromObject>"};

}  // namespace api::json
