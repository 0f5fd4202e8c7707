#include "engine/log_lines.h"
#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonGetTypeFromObject for handle %s with xpath %s into var %s"};
constexpr engine::LogLine kTheSpecifiedPathDoes{
    L"jsonGetTypeFromObject the specified path does not refer to a JSON field"};

}  // namespace

const Parameters& FunctionJsonGetTypeFromObject::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetTypeFromObject::handle_>(L"handle"),
      engine::text<&FunctionJsonGetTypeFromObject::xpath_>(L"xpath"),
      engine::variable<&FunctionJsonGetTypeFromObject::var_>(L"var")};
  return list;
}

// The handle's own value must be an object, even for an empty path.
void FunctionJsonGetTypeFromObject::execute() {
  const std::wstring xpath = expand(xpath_);
  engine::log(kStart, handle_.c_str(), xpath.c_str(), var_.c_str());
  std::optional<helpers::JsonLocation> location = findObject(handle_);
  if (!location) {
    engine::log(helpers::kNotAnObject, name(), handle_.c_str());
    return end(false);
  }
  if (!walkPath(*location, xpath)) {
    engine::log(kTheSpecifiedPathDoes);
    return end(false);
  }
  variables().set(var_, helpers::typeName(*location->value));
  end(true);
}

const engine::TagDoc FunctionJsonGetTypeFromObject::doc{
    L"Stores in `var` the type of the value at the key path `xpath` below the object under `handle`: `object`, `array`, `string`, `boolean`, `number` or `null`. `xpath` is expanded when it runs and lists object keys separated by `/` (empty steps skipped, no array indexes); an empty one gives the handle's own value, which must be an object too.",
    {kStart, helpers::kNotAnObject.as(L"jsonGetTypeFromObject"), kTheSpecifiedPathDoes,
     engine::kSubjectEnd.as(L"jsonGetTypeFromObject")},
    L"True: `var` holds the type. False: `handle` holds no JSON object, or a key of `xpath` is missing or its parent is no object; `var` is unchanged.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonGetTypeFromObject handle=\"cfg\" xpath=\"server/hosts\" var=\"type\"/>"};

}  // namespace api::json
