#include <algorithm>

#include "functions/json/functions.h"
#include "platform/text.h"

namespace api::json::helpers {

const engine::Parameters& FunctionJsonManipulator::scalarParameters() {
  static const engine::Parameters list = {engine::checked(L"stringValue", engine::Form::Text, engine::Need::Optional),
                                          engine::checked(L"numberValue", engine::Form::Text, engine::Need::Optional),
                                          engine::checked(L"boolValue", engine::Form::Text, engine::Need::Optional)};
  return list;
}

bool FunctionJsonManipulator::readParametersAndScalar(ScalarSource& source) {
  if (!readParameters()) return false;
  const auto text = attribute(L"stringValue"), number = attribute(L"numberValue"), boolean = attribute(L"boolValue");
  source.choose(text ? &*text : nullptr, number ? &*number : nullptr, boolean ? &*boolean : nullptr);
  return true;
}

bool FunctionJsonManipulator::walkPath(JsonLocation& location, const std::wstring& path) {
  size_t position = 0;
  while (true) {
    position = path.find_first_not_of(L'/', position);
    if (position == std::wstring::npos) return true;
    const size_t stop = std::min(path.find(L'/', position), path.size());
    if (!location.value->is<picojson::object>()) return false;
    std::string key = platform::toUtf8(std::wstring_view(path).substr(position, stop - position));
    picojson::object& members = location.value->get<picojson::object>();
    auto it = members.find(key);
    if (it == members.end()) return false;
    location.enter(std::move(key), it->second);
    position = stop;
  }
}

std::optional<JsonLocation> FunctionJsonManipulator::findObject(const std::wstring& handle) const {
  std::optional<JsonLocation> found = findJson(handles(), handle);
  if (found && !found->value->is<picojson::object>()) found.reset();
  return found;
}

std::optional<JsonLocation> FunctionJsonManipulator::elementByIndex(const std::wstring& handle,
                                                                    const std::wstring& indexText, int* index) const {
  std::optional<JsonLocation> found = findJson(handles(), handle);
  if (!found || !found->value->is<picojson::array>()) {
    engine::log(kNotAnArray, handle.c_str());
    return std::nullopt;
  }
  const std::optional<int> parsed = parseIndex(indexText);
  if (!parsed) {
    engine::log(kNotAnIndex, indexText.c_str());
    return std::nullopt;
  }
  picojson::array& elements = found->value->get<picojson::array>();
  if (*parsed < 0 || static_cast<size_t>(*parsed) >= elements.size()) {
    engine::log(kOutOfBounds, indexText.c_str(), handle.c_str());
    return std::nullopt;
  }
  if (index) *index = *parsed;
  const size_t position = static_cast<size_t>(*parsed);
  found->enter(position, elements[position]);
  return found;
}

picojson::array* FunctionJsonManipulator::arrayForEdit(const std::wstring& handle, const std::wstring& indexText,
                                                       bool endAllowed, size_t& index) const {
  picojson::value* array = findJsonOf<picojson::array>(handles(), handle);
  if (!array) {
    engine::log(kEditNotAnArray, name(), handle.c_str());
    return nullptr;
  }
  const std::optional<int> parsed = parseIndex(indexText);
  if (!parsed) {
    engine::log(kEditNotAnIndex, name(), indexText.c_str());
    return nullptr;
  }
  picojson::array& elements = array->get<picojson::array>();
  const size_t limit = endAllowed ? elements.size() + 1 : elements.size();
  if (*parsed < 0 || static_cast<size_t>(*parsed) >= limit) {
    engine::log(kEditOutOfBounds, name(), indexText.c_str(), handle.c_str());
    return nullptr;
  }
  index = static_cast<size_t>(*parsed);
  return &elements;
}

bool FunctionJsonManipulator::convertScalar(const ScalarSource& source, const std::wstring& expanded,
                                            picojson::value& out) const {
  switch (source.convert(expanded, out)) {
    case ScalarSource::Error::None: return true;
    case ScalarSource::Error::Number: engine::log(kNotANumber, name(), expanded.c_str()); break;
    case ScalarSource::Error::Boolean: engine::log(kNotABoolean, name(), expanded.c_str()); break;
    case ScalarSource::Error::Type: engine::log(kUnknownValueType, name()); break;
  }
  return false;
}

std::optional<picojson::value> emptyNonScalar(const std::wstring& type) {
  if (type == L"object") return picojson::value(picojson::object());
  if (type == L"array") return picojson::value(picojson::array());
  return std::nullopt;
}

}  // namespace api::json::helpers
