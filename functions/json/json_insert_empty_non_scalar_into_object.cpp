#include "functions/json/functions.h"
#include "platform/text.h"

namespace api::json {

const Parameters& FunctionJsonInsertEmptyNonScalarIntoObject::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonInsertEmptyNonScalarIntoObject::handle_>(L"handle"),
      engine::text<&FunctionJsonInsertEmptyNonScalarIntoObject::xpath_>(L"xpath"),
      engine::literal<&FunctionJsonInsertEmptyNonScalarIntoObject::name_>(L"name"),
      engine::literal<&FunctionJsonInsertEmptyNonScalarIntoObject::type_>(L"type")};
  return list;
}

// The xpath is only logged: the member always goes into the handle's own object.
void FunctionJsonInsertEmptyNonScalarIntoObject::execute() {
  const std::wstring xpath = expand(xpath_);
  engine::log(L"jsonInsertEmptyNonScalarIntoObject %s at path %s and name %s", handle_.c_str(), xpath.c_str(),
              name_.c_str());
  picojson::value* object = helpers::findJsonOf<picojson::object>(handles(), handle_);
  if (!object) {
    engine::log(L"jsonInsertEmptyNonScalarIntoObject handle %s does not refer to a JSON object", handle_.c_str());
    return end(false);
  }
  std::optional<picojson::value> value = helpers::emptyNonScalar(type_);
  if (!value) {
    engine::log(L"jsonInsertEmptyNonScalarIntoObject unrecognized non scalar type");
    return end(false);
  }
  object->get<picojson::object>()[platform::toUtf8(name_)] = std::move(*value);
  end(true);
}

const engine::TagDoc FunctionJsonInsertEmptyNonScalarIntoObject::doc{
    L"Sets the member `name` (taken as written) of the object under `handle` itself to an empty object or array, as `type` says (`object` or `array`, taken as written), replacing any value of that name. `xpath` is expanded and logged but not used: the member always goes into the handle's own object.",
    L"jsonInsertEmptyNonScalarIntoObject %s at path %s and name %s\njsonInsertEmptyNonScalarIntoObject handle %s does not refer to a JSON object\njsonInsertEmptyNonScalarIntoObject unrecognized non scalar type\njsonInsertEmptyNonScalarIntoObject end with %s",
    L"True: the member is set. False: `handle` holds no JSON object, or `type` is neither `object` nor `array`; nothing changes.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonInsertEmptyNonScalarIntoObject handle=\"cfg\" xpath=\"\" name=\"plugins\" type=\"array\"/>"};

}  // namespace api::json
