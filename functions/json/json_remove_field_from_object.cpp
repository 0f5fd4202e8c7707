#include "engine/log_lines.h"
#include "functions/json/functions.h"
#include "platform/text.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonRemoveFieldFromObject %s at path %s with name %s"};
constexpr engine::LogLine kTheSpecifiedPathDoes{
    L"jsonRemoveFieldFromObject the specified path does not refer to a JSON object"};

// Deliberately ends with jsonInsertEmptyNonScalarIntoArray's end line.
constexpr const wchar_t* kEndTag = L"jsonInsertEmptyNonScalarIntoArray";
}  // namespace

const Parameters& FunctionJsonRemoveFieldFromObject::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonRemoveFieldFromObject::handle_>(L"handle"),
      engine::text<&FunctionJsonRemoveFieldFromObject::xpath_>(L"xpath"),
      engine::literal<&FunctionJsonRemoveFieldFromObject::name_>(L"name")};
  return list;
}

// Removing a member that is not there still succeeds.
void FunctionJsonRemoveFieldFromObject::execute() {
  const std::wstring xpath = expand(xpath_);
  engine::log(kStart, handle_.c_str(), xpath.c_str(), name_.c_str());
  std::optional<helpers::JsonLocation> location = findObject(handle_);
  if (!location) {
    engine::log(helpers::kNotAnObject, name(), handle_.c_str());
    return end(false, kEndTag);
  }
  if (!walkPath(*location, xpath) || !location->value->is<picojson::object>()) {
    engine::log(kTheSpecifiedPathDoes);
    return end(false, kEndTag);
  }
  location->value->get<picojson::object>().erase(platform::toUtf8(name_));
  end(true, kEndTag);
}

const engine::TagDoc FunctionJsonRemoveFieldFromObject::doc{
    L"Removes the member `name` (taken as written) from the object at the key path `xpath` (as in `jsonGetTypeFromObject`) below the object under `handle`; a member that is not there is no error. It ends with `jsonInsertEmptyNonScalarIntoArray`'s end line.",
    {kStart, helpers::kNotAnObject.as(L"jsonRemoveFieldFromObject"), kTheSpecifiedPathDoes,
     engine::kSubjectEnd.as(L"jsonInsertEmptyNonScalarIntoArray")},
    L"True: the member is gone, or was never there. False: `handle` holds no JSON object, or the path is missing or holds no object.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonRemoveFieldFromObject handle=\"cfg\" xpath=\"server\" name=\"legacyPort\"/>"};

}  // namespace api::json
