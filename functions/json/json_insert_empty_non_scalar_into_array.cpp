#include "engine/log_lines.h"
#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonInsertEmptyNonScalarIntoArray %s at index %s"};

}  // namespace

const Parameters& FunctionJsonInsertEmptyNonScalarIntoArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonInsertEmptyNonScalarIntoArray::handle_>(L"handle"),
      engine::text<&FunctionJsonInsertEmptyNonScalarIntoArray::index_>(L"index"),
      engine::literal<&FunctionJsonInsertEmptyNonScalarIntoArray::type_>(L"type")};
  return list;
}

void FunctionJsonInsertEmptyNonScalarIntoArray::execute() {
  const std::wstring indexText = expand(index_);
  engine::log(kStart, handle_.c_str(), indexText.c_str());
  size_t index = 0;
  picojson::array* elements = arrayForEdit(handle_, indexText, true, index);
  if (!elements) return end(false);
  std::optional<picojson::value> value = helpers::emptyNonScalar(type_);
  if (!value) {
    engine::log(helpers::kUnknownNonScalarType, name());
    return end(false);
  }
  elements->insert(elements->begin() + static_cast<std::ptrdiff_t>(index), std::move(*value));
  end(true);
}

const engine::TagDoc FunctionJsonInsertEmptyNonScalarIntoArray::doc{
    L"Inserts an empty object or array (`type`: `object` or `array`, taken as written) into the array under `handle` before element `index` (the length appends); `index` is expanded when it runs and read like `stoi`.",
    {kStart, helpers::kEditNotAnArray.as(L"jsonInsertEmptyNonScalarIntoArray"),
     helpers::kEditNotAnIndex.as(L"jsonInsertEmptyNonScalarIntoArray"),
     helpers::kEditOutOfBounds.as(L"jsonInsertEmptyNonScalarIntoArray"),
     helpers::kUnknownNonScalarType.as(L"jsonInsertEmptyNonScalarIntoArray"),
     engine::kSubjectEnd.as(L"jsonInsertEmptyNonScalarIntoArray")},
    L"True: the element is inserted. False: `handle` holds no JSON array, `index` has no digits or lies beyond the length, or `type` is neither `object` nor `array`; nothing changes.",
    L"<jsonOpen path=\"%enginedir%servers.json\" handle=\"servers\"/>\n<jsonGetArrayLength handle=\"servers\" var=\"count\"/>\n<jsonInsertEmptyNonScalarIntoArray handle=\"servers\" index=\"%count%\" type=\"object\"/>"};

}  // namespace api::json
