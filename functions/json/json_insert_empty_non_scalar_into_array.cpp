#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonInsertEmptyNonScalarIntoArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonInsertEmptyNonScalarIntoArray::handle_>(L"handle"),
      engine::text<&FunctionJsonInsertEmptyNonScalarIntoArray::index_>(L"index"),
      engine::literal<&FunctionJsonInsertEmptyNonScalarIntoArray::type_>(L"type")};
  return list;
}

void FunctionJsonInsertEmptyNonScalarIntoArray::execute() {
  const std::wstring indexText = expand(index_);
  engine::log(L"jsonInsertEmptyNonScalarIntoArray %s at index %s", handle_.c_str(), indexText.c_str());
  size_t index = 0;
  picojson::array* elements = arrayForEdit(handle_, indexText, true, index);
  if (!elements) return end(false);
  std::optional<picojson::value> value = helpers::emptyNonScalar(type_);
  if (!value) {
    engine::log(L"jsonInsertEmptyNonScalarIntoArray unrecognized non scalar type");
    return end(false);
  }
  elements->insert(elements->begin() + static_cast<std::ptrdiff_t>(index), std::move(*value));
  end(true);
}

}  // namespace api::json
