#include "functions/json/functions.h"

namespace api::json {

bool FunctionJsonInsertScalarIntoArray::readAttributes() {
  if (!readText(L"handle", handle_) || !readText(L"index", index_)) return false;
  value_.choose(attribute(L"stringValue"), attribute(L"numberValue"), attribute(L"boolValue"));
  return true;
}

// The index is checked before the value: a bad index hides a bad value.
void FunctionJsonInsertScalarIntoArray::execute() {
  const std::wstring indexText = expand(index_), text = expand(value_.text());
  engine::log(L"jsonInsertScalarIntoArray %s at index %s with value %s", handle_.c_str(), indexText.c_str(),
              text.c_str());
  size_t index = 0;
  picojson::array* elements = arrayForEdit(handle_, indexText, true, index);
  if (!elements) return end(false);
  picojson::value value;
  if (!convertScalar(value_, text, value)) return end(false);
  elements->insert(elements->begin() + static_cast<std::ptrdiff_t>(index), std::move(value));
  end(true);
}

}  // namespace api::json
