#include "engine/log_lines.h"
#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonInsertScalarIntoArray %s at index %s with value %s"};

}  // namespace

const Parameters& FunctionJsonInsertScalarIntoArray::parameters() {
  static const Parameters list = engine::joined({engine::handle<&FunctionJsonInsertScalarIntoArray::handle_>(L"handle"),
      engine::text<&FunctionJsonInsertScalarIntoArray::index_>(L"index")}, scalarParameters());
  return list;
}

bool FunctionJsonInsertScalarIntoArray::readAttributes() { return readParametersAndScalar(value_); }

// The index is checked before the value: a bad index hides a bad value.
void FunctionJsonInsertScalarIntoArray::execute() {
  const std::wstring indexText = expand(index_), text = expand(value_.text());
  engine::log(kStart, handle_.c_str(), indexText.c_str(), text.c_str());
  size_t index = 0;
  picojson::array* elements = arrayForEdit(handle_, indexText, true, index);
  if (!elements) return end(false);
  picojson::value value;
  if (!convertScalar(value_, text, value)) return end(false);
  elements->insert(elements->begin() + static_cast<std::ptrdiff_t>(index), std::move(value));
  end(true);
}

const engine::TagDoc FunctionJsonInsertScalarIntoArray::doc{
    L"Inserts one scalar into the array under `handle` before element `index` (the length appends): `stringValue`, `numberValue` or `boolValue`, chosen and read as in `jsonInsertScalarIntoObject`. `index` and the value are expanded when it runs, `index` read like `stoi`; the document changes in memory only, until `jsonSave`.",
    {kStart, helpers::kEditNotAnArray.as(L"jsonInsertScalarIntoArray"),
     helpers::kEditNotAnIndex.as(L"jsonInsertScalarIntoArray"),
     helpers::kEditOutOfBounds.as(L"jsonInsertScalarIntoArray"), helpers::kNotANumber.as(L"jsonInsertScalarIntoArray"),
     helpers::kNotABoolean.as(L"jsonInsertScalarIntoArray"),
     helpers::kUnknownValueType.as(L"jsonInsertScalarIntoArray"), engine::kSubjectEnd.as(L"jsonInsertScalarIntoArray")},
    L"True: the element is inserted. False: `handle` holds no JSON array, `index` has no digits or lies beyond the length, or the value does not convert or is missing; nothing changes.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonGetArrayFromObject objectHandle=\"cfg\" arrayHandle=\"hosts\" xpath=\"server/hosts\"/>\n<jsonInsertScalarIntoArray handle=\"hosts\" index=\"0\" stringValue=\"backup.local\"/>"};

}  // namespace api::json
