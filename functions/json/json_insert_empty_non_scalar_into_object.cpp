#include "engine/log_lines.h"
#include "functions/json/functions.h"
#include "platform/text.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonInsertEmptyNonScalarIntoObject %s at path %s and name %s"};

}  // namespace

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
  engine::log(kStart, handle_.c_str(), xpath.c_str(), name_.c_str());
  picojson::value* object = helpers::findJsonOf<picojson::object>(handles(), handle_);
  if (!object) {
    engine::log(helpers::kNotAnObject, name(), handle_.c_str());
    return end(false);
  }
  std::optional<picojson::value> value = helpers::emptyNonScalar(type_);
  if (!value) {
    engine::log(helpers::kUnknownNonScalarType, name());
    return end(false);
  }
  object->get<picojson::object>()[platform::toUtf8(name_)] = std::move(*value);
  end(true);
}

const engine::TagDoc FunctionJsonInsertEmptyNonScalarIntoObject::doc{
    L"Sets the member `name` (taken as written) of the object under `handle` itself to an empty object or array, as `type` says (`object` or `array`, taken as written), replacing any value of that name. `xpath` is expanded and logged but not used: the member always goes into the handle's own object.",
    {kStart, helpers::kNotAnObject.as(L"jsonInsertEmptyNonScalarIntoObject"),
     helpers::kUnknownNonScalarType.as(L"jsonInsertEmptyNonScalarIntoObject"),
     engine::kSubjectEnd.as(L"jsonInsertEmptyNonScalarIntoObject")},
    L"True: the member is set. False: `handle` holds no JSON object, or `type` is neither `object` nor `array`; nothing changes.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonInsertEmptyNonScalarIntoObject handle=\"cfg\" xpath=\"\" name=\"plugins\" type=\"array\"/>"};

}  // namespace api::json
