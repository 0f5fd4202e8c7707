#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonGetScalarFromObject::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetScalarFromObject::handle_>(L"handle"),
      engine::text<&FunctionJsonGetScalarFromObject::xpath_>(L"xpath"),
      engine::variable<&FunctionJsonGetScalarFromObject::var_>(L"var")};
  return list;
}

void FunctionJsonGetScalarFromObject::execute() {
  const std::wstring xpath = expand(xpath_);
  engine::log(L"jsonGetScalarFromObject %s from handle %s and path %s", var_.c_str(), handle_.c_str(), xpath.c_str());
  std::optional<helpers::JsonLocation> location = findObject(handle_);
  if (!location) {
    engine::log(L"jsonGetScalarFromObject handle %s does not refer to a JSON object.", handle_.c_str());
    return end(false);
  }
  // A missing key and a non-scalar value give the same message.
  if (!walkPath(*location, xpath) || !helpers::isScalar(*location->value)) {
    engine::log(L"jsonGetScalarFromObject the specified value is not a scalar");
    return end(false);
  }
  variables().set(var_, helpers::scalarText(*location->value));
  end(true);
}

}  // namespace api::json
