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

const engine::TagDoc FunctionJsonInsertScalarIntoArray::doc{
    L"Inserts one scalar into the array under `handle` before element `index` (the length appends): `stringValue`, `numberValue` or `boolValue`, chosen and read as in `jsonInsertScalarIntoObject`. `index` and the value are expanded when it runs, `index` read like `stoi`; the document changes in memory only, until `jsonSave`.",
    L"jsonInsertScalarIntoArray %s at index %s with value %s\njsonInsertScalarIntoArray handle %s does not refer to a JSON array\njsonInsertScalarIntoArray could not convert %s to an integer index\njsonInsertScalarIntoArray index %s is out of bounds for array %s\njsonInsertScalarIntoArray cannot convert value %s to number\njsonInsertScalarIntoArray cannot convert value %s to boolean\njsonInsertScalarIntoArray unrecognized value type\njsonInsertScalarIntoArray end with %s",
    L"True: the element is inserted. False: `handle` holds no JSON array, `index` has no digits or lies beyond the length, or the value does not convert or is missing; nothing changes.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonGetArrayFromObject objectHandle=\"cfg\" arrayHandle=\"hosts\" xpath=\"server/hosts\"/>\n<jsonInsertScalarIntoArray handle=\"hosts\" index=\"0\" stringValue=\"backup.local\"/>"};

}  // namespace api::json
