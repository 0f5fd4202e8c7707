#include "engine/log_lines.h"
#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonGetArrayFromObject %s from object handle %s and path %s"};
constexpr engine::LogLine kTheSpecifiedValueIs{L"jsonGetArrayFromObject the specified value is not an array"};

}  // namespace

const Parameters& FunctionJsonGetArrayFromObject::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetArrayFromObject::objectHandle_>(L"objectHandle"),
      engine::newHandle<&FunctionJsonGetArrayFromObject::arrayHandle_>(L"arrayHandle"),
      engine::text<&FunctionJsonGetArrayFromObject::xpath_>(L"xpath")};
  return list;
}

void FunctionJsonGetArrayFromObject::execute() {
  const std::wstring xpath = expand(xpath_);
  engine::log(kStart, arrayHandle_.c_str(), objectHandle_.c_str(), xpath.c_str());
  std::optional<helpers::JsonLocation> location = findObject(objectHandle_);
  if (!location) {
    engine::log(helpers::kNotAnObjectStop, name(), objectHandle_.c_str());
    return end(false);
  }
  if (!walkPath(*location, xpath) || !location->value->is<picojson::array>()) {
    engine::log(kTheSpecifiedValueIs);
    return end(false);
  }
  helpers::storeNode(handles(), arrayHandle_, *location);
  end(true);
}

const engine::TagDoc FunctionJsonGetArrayFromObject::doc{
    L"Stores under the handle name `arrayHandle` a node for the array at the key path `xpath` (as in `jsonGetTypeFromObject`) below the object under `objectHandle`, replacing what the name held. The node follows its position in the document: after an edit it sees what is there now, or refers to nothing.",
    {kStart, helpers::kNotAnObjectStop.as(L"jsonGetArrayFromObject"), kTheSpecifiedValueIs,
     engine::kSubjectEnd.as(L"jsonGetArrayFromObject")},
    L"True: `arrayHandle` names the array. False: `objectHandle` holds no JSON object, or the path is missing or holds no array; `arrayHandle` keeps what it held.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonGetArrayFromObject objectHandle=\"cfg\" arrayHandle=\"hosts\" xpath=\"server/hosts\"/>\n<jsonGetArrayLength handle=\"hosts\" var=\"count\"/>"};

}  // namespace api::json
