#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonGetNonScalarFromArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetNonScalarFromArray::arrayHandle_>(L"arrayHandle"),
      engine::newHandle<&FunctionJsonGetNonScalarFromArray::nonScalarHandle_>(L"nonScalarHandle"),
      engine::text<&FunctionJsonGetNonScalarFromArray::index_>(L"index")};
  return list;
}

void FunctionJsonGetNonScalarFromArray::execute() {
  const std::wstring indexText = expand(index_);
  engine::log(L"jsonGetNonScalarFromArray %s from parent %s index %s", nonScalarHandle_.c_str(), arrayHandle_.c_str(),
              indexText.c_str());
  int index = 0;
  const std::optional<helpers::JsonLocation> element = elementByIndex(arrayHandle_, indexText, &index);
  if (!element) return end(false);
  if (!element->value->is<picojson::array>() && !element->value->is<picojson::object>()) {
    engine::log(L"jsonGetNonScalarFromArray index %d from array %s does not contain a non scalar", index,
                arrayHandle_.c_str());
    return end(false);
  }
  helpers::storeNode(handles(), nonScalarHandle_, *element);
  end(true);
}

}  // namespace api::json
