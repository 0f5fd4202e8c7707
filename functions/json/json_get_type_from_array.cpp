#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonGetTypeFromArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetTypeFromArray::handle_>(L"handle"),
      engine::text<&FunctionJsonGetTypeFromArray::index_>(L"index"),
      engine::variable<&FunctionJsonGetTypeFromArray::var_>(L"var")};
  return list;
}

void FunctionJsonGetTypeFromArray::execute() {
  const std::wstring index = expand(index_);
  engine::log(L"jsonGetTypeFromArray for handle %s index %s into variable %s", handle_.c_str(), index.c_str(),
              var_.c_str());
  const std::optional<helpers::JsonLocation> element = elementByIndex(handle_, index);
  if (!element) return end(false);
  variables().set(var_, helpers::typeName(*element->value));
  end(true);
}

}  // namespace api::json
