#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonInsertScalarIntoArray::parameters() {
  static const Parameters list = engine::joined({engine::handle<&FunctionJsonInsertScalarIntoArray::handle_>(L"handle"),
      engine::text<&FunctionJsonInsertScalarIntoArray::index_>(L"index")}, scalarParameters());
  return list;
}

bool FunctionJsonInsertScalarIntoArray::readAttributes() { return readParametersAndScalar(value_); }

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
