#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonRemoveFieldFromArray %s at index %s"};

}  // namespace

const Parameters& FunctionJsonRemoveFieldFromArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonRemoveFieldFromArray::handle_>(L"handle"),
      engine::text<&FunctionJsonRemoveFieldFromArray::index_>(L"index")};
  return list;
}

// Writes no end line.
void FunctionJsonRemoveFieldFromArray::execute() {
  const std::wstring indexText = expand(index_);
  engine::log(kStart, handle_.c_str(), indexText.c_str());
  size_t index = 0;
  picojson::array* elements = arrayForEdit(handle_, indexText, false, index);
  if (!elements) return setResult(false);
  elements->erase(elements->begin() + static_cast<std::ptrdiff_t>(index));
  setResult(true);
}

const engine::TagDoc FunctionJsonRemoveFieldFromArray::doc{
    L"Removes element `index` from the array under `handle`; the elements after it move up one. `index` is expanded when it runs and read like `stoi`. It writes no end line.",
    {kStart, helpers::kEditNotAnArray.as(L"jsonRemoveFieldFromArray"),
     helpers::kEditNotAnIndex.as(L"jsonRemoveFieldFromArray"),
     helpers::kEditOutOfBounds.as(L"jsonRemoveFieldFromArray")},
    L"True: the element is removed. False: `handle` holds no JSON array, or `index` has no digits or lies outside it.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonGetArrayFromObject objectHandle=\"cfg\" arrayHandle=\"hosts\" xpath=\"server/hosts\"/>\n<jsonRemoveFieldFromArray handle=\"hosts\" index=\"0\"/>"};

}  // namespace api::json
