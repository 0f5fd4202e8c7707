#include "engine/log_lines.h"
#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonGetNonScalarFromArray %s from parent %s index %s"};
constexpr engine::LogLine kIndexFromArrayDoes{
    L"jsonGetNonScalarFromArray index %d from array %s does not contain a non scalar"};

}  // namespace

const Parameters& FunctionJsonGetNonScalarFromArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetNonScalarFromArray::arrayHandle_>(L"arrayHandle"),
      engine::newHandle<&FunctionJsonGetNonScalarFromArray::nonScalarHandle_>(L"nonScalarHandle"),
      engine::text<&FunctionJsonGetNonScalarFromArray::index_>(L"index")};
  return list;
}

void FunctionJsonGetNonScalarFromArray::execute() {
  const std::wstring indexText = expand(index_);
  engine::log(kStart, nonScalarHandle_.c_str(), arrayHandle_.c_str(), indexText.c_str());
  int index = 0;
  const std::optional<helpers::JsonLocation> element = elementByIndex(arrayHandle_, indexText, &index);
  if (!element) return end(false);
  if (!element->value->is<picojson::array>() && !element->value->is<picojson::object>()) {
    engine::log(kIndexFromArrayDoes, index, arrayHandle_.c_str());
    return end(false);
  }
  helpers::storeNode(handles(), nonScalarHandle_, *element);
  end(true);
}

const engine::TagDoc FunctionJsonGetNonScalarFromArray::doc{
    L"Stores under the handle name `nonScalarHandle` a node for the object or array at element `index` of the array under `arrayHandle`, replacing what the name held; `index` is expanded when it runs and read like `stoi`. The node follows its position in the document, like those of `jsonGetArrayFromObject`.",
    {kStart, helpers::kNotAnArray, helpers::kNotAnIndex, helpers::kOutOfBounds, kIndexFromArrayDoes,
     engine::kSubjectEnd.as(L"jsonGetNonScalarFromArray")},
    L"True: `nonScalarHandle` names the element. False: `arrayHandle` holds no JSON array, `index` has no digits or lies outside it, or the element is a scalar or `null`; `nonScalarHandle` keeps what it held.",
    L"<jsonOpen path=\"%enginedir%servers.json\" handle=\"servers\"/>\n<jsonGetNonScalarFromArray arrayHandle=\"servers\" nonScalarHandle=\"first\" index=\"0\"/>\n<jsonGetScalarFromObject handle=\"first\" xpath=\"name\" var=\"name\"/>"};

}  // namespace api::json
