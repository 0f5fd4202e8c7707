#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonGetTypeFromObject::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetTypeFromObject::handle_>(L"handle"),
      engine::text<&FunctionJsonGetTypeFromObject::xpath_>(L"xpath"),
      engine::variable<&FunctionJsonGetTypeFromObject::var_>(L"var")};
  return list;
}

// The handle's own value must be an object, even for an empty path.
void FunctionJsonGetTypeFromObject::execute() {
  const std::wstring xpath = expand(xpath_);
  engine::log(L"jsonGetTypeFromObject for handle %s with xpath %s into var %s", handle_.c_str(), xpath.c_str(),
              var_.c_str());
  std::optional<helpers::JsonLocation> location = findObject(handle_);
  if (!location) {
    engine::log(L"jsonGetTypeFromObject handle %s does not refer to a JSON object", handle_.c_str());
    return end(false);
  }
  if (!walkPath(*location, xpath)) {
    engine::log(L"jsonGetTypeFromObject the specified path does not refer to a JSON field");
    return end(false);
  }
  variables().set(var_, helpers::typeName(*location->value));
  end(true);
}

}  // namespace api::json
