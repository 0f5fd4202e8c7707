#include "engine/log_lines.h"
#include "functions/json/functions.h"
#include "platform/text.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonInsertScalarIntoObject %s at %s with name %s and value %s"};
constexpr engine::LogLine kTheSpecifiedXpathDoes{
    L"jsonInsertScalarIntoObject the specified xpath does not refer to a JSON object"};

}  // namespace

const Parameters& FunctionJsonInsertScalarIntoObject::parameters() {
  static const Parameters list = engine::joined({engine::handle<&FunctionJsonInsertScalarIntoObject::handle_>(L"handle", Need::NonEmpty),
      engine::text<&FunctionJsonInsertScalarIntoObject::xpath_>(L"xpath"),
      engine::literal<&FunctionJsonInsertScalarIntoObject::name_>(L"name", Need::NonEmpty)}, scalarParameters());
  return list;
}

bool FunctionJsonInsertScalarIntoObject::readAttributes() { return readParametersAndScalar(value_); }

// Sets the member, replacing any earlier value of that name whatever its type.
void FunctionJsonInsertScalarIntoObject::execute() {
  const std::wstring xpath = expand(xpath_), text = expand(value_.text());
  engine::log(kStart, handle_.c_str(), xpath.c_str(), name_.c_str(), text.c_str());
  std::optional<helpers::JsonLocation> location = findObject(handle_);
  if (!location) {
    engine::log(helpers::kNotAnObject, name(), handle_.c_str());
    return end(false);
  }
  if (!walkPath(*location, xpath) || !location->value->is<picojson::object>()) {
    engine::log(kTheSpecifiedXpathDoes);
    return end(false);
  }
  picojson::value value;
  if (!convertScalar(value_, text, value)) return end(false);
  location->value->get<picojson::object>()[platform::toUtf8(name_)] = std::move(value);
  end(true);
}

const engine::TagDoc FunctionJsonInsertScalarIntoObject::doc{
    L"Sets the member `name` (taken as written) of the object at the key path `xpath` (as in `jsonGetTypeFromObject`) below the object under `handle`, replacing any value of that name, to one scalar: `stringValue` (even empty), else a non-empty `numberValue` (read like `stod`: `8443`, `1.5e3`), else a non-empty `boolValue` (exactly `true`, `1`, `false` or `0`). The value is expanded when it runs; the document changes in memory only, until `jsonSave`.",
    {kStart, helpers::kNotAnObject.as(L"jsonInsertScalarIntoObject"), kTheSpecifiedXpathDoes,
     helpers::kNotANumber.as(L"jsonInsertScalarIntoObject"), helpers::kNotABoolean.as(L"jsonInsertScalarIntoObject"),
     helpers::kUnknownValueType.as(L"jsonInsertScalarIntoObject"),
     engine::kSubjectEnd.as(L"jsonInsertScalarIntoObject")},
    L"True: the member is set. False: `handle` holds no JSON object, the path is missing or holds no object, the value does not convert (a number without digits or out of range, another boolean text), or no value attribute is given; nothing changes.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonInsertScalarIntoObject handle=\"cfg\" xpath=\"server\" name=\"port\" numberValue=\"8443\"/>\n<jsonSave path=\"%enginedir%app.json\" handle=\"cfg\"/>"};

}  // namespace api::json
