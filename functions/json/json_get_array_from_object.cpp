#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonGetArrayFromObject::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetArrayFromObject::objectHandle_>(L"objectHandle"),
      engine::newHandle<&FunctionJsonGetArrayFromObject::arrayHandle_>(L"arrayHandle"),
      engine::text<&FunctionJsonGetArrayFromObject::xpath_>(L"xpath")};
  return list;
}

void FunctionJsonGetArrayFromObject::execute() {
  const std::wstring xpath = expand(xpath_);
  engine::log(L"jsonGetArrayFromObject %s from object handle %s and path %s", arrayHandle_.c_str(),
              objectHandle_.c_str(), xpath.c_str());
  std::optional<helpers::JsonLocation> location = findObject(objectHandle_);
  if (!location) {
    engine::log(L"jsonGetArrayFromObject handle %s does not refer to a JSON object.", objectHandle_.c_str());
    return end(false);
  }
  if (!walkPath(*location, xpath) || !location->value->is<picojson::array>()) {
    engine::log(L"jsonGetArrayFromObject the specified value is not an array");
    return end(false);
  }
  helpers::storeNode(handles(), arrayHandle_, *location);
  end(true);
}

}  // namespace api::json
