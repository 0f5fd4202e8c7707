#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonGetScalarFromArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetScalarFromArray::handle_>(L"handle"),
      engine::text<&FunctionJsonGetScalarFromArray::index_>(L"index"),
      engine::variable<&FunctionJsonGetScalarFromArray::var_>(L"var")};
  return list;
}

void FunctionJsonGetScalarFromArray::execute() {
  const std::wstring indexText = expand(index_);
  engine::log(L"jsonGetScalarFromArray %s at index %s", handle_.c_str(), indexText.c_str());
  int index = 0;
  const std::optional<helpers::JsonLocation> element = elementByIndex(handle_, indexText, &index);
  if (!element) return end(false);
  if (!helpers::isScalar(*element->value)) {
    engine::log(L"jsonGetScalarFromArray index %d in array %s does not contain a scalar", index, handle_.c_str());
    return end(false);
  }
  variables().set(var_, helpers::scalarText(*element->value));
  end(true);
}

}  // namespace api::json
