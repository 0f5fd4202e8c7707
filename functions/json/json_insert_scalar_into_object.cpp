#include "functions/json/functions.h"
#include "platform/text.h"

namespace api::json {

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
  engine::log(L"jsonInsertScalarIntoObject %s at %s with name %s and value %s", handle_.c_str(), xpath.c_str(),
              name_.c_str(), text.c_str());
  std::optional<helpers::JsonLocation> location = findObject(handle_);
  if (!location) {
    engine::log(L"jsonInsertScalarIntoObject handle %s does not refer to a JSON object", handle_.c_str());
    return end(false);
  }
  if (!walkPath(*location, xpath) || !location->value->is<picojson::object>()) {
    engine::log(L"jsonInsertScalarIntoObject the specified xpath does not refer to a JSON object");
    return end(false);
  }
  picojson::value value;
  if (!convertScalar(value_, text, value)) return end(false);
  location->value->get<picojson::object>()[platform::toUtf8(name_)] = std::move(value);
  end(true);
}

}  // namespace api::json
