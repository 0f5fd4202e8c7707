#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonRemoveFieldFromArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonRemoveFieldFromArray::handle_>(L"handle"),
      engine::text<&FunctionJsonRemoveFieldFromArray::index_>(L"index")};
  return list;
}

// Writes no end line.
void FunctionJsonRemoveFieldFromArray::execute() {
  const std::wstring indexText = expand(index_);
  engine::log(L"jsonRemoveFieldFromArray %s at index %s", handle_.c_str(), indexText.c_str());
  size_t index = 0;
  picojson::array* elements = arrayForEdit(handle_, indexText, false, index);
  if (!elements) return setResult(false);
  elements->erase(elements->begin() + static_cast<std::ptrdiff_t>(index));
  setResult(true);
}

}  // namespace api::json
