#include "functions/json/functions.h"

namespace api::json {

bool FunctionJsonGetTypeFromArray::readAttributes() {
  return readText(L"handle", handle_) && readText(L"index", index_) && readText(L"var", var_);
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
