#include "functions/json/detail/json_handles.h"

namespace api::json::helpers {
namespace {

picojson::value* follow(picojson::value& root, const std::vector<JsonStep>& route) {
  picojson::value* current = &root;
  for (const JsonStep& step : route) {
    if (step.index == JsonStep::kKey) {
      if (!current->is<picojson::object>()) return nullptr;
      picojson::object& members = current->get<picojson::object>();
      auto it = members.find(step.key);
      if (it == members.end()) return nullptr;
      current = &it->second;
    } else {
      if (!current->is<picojson::array>()) return nullptr;
      picojson::array& elements = current->get<picojson::array>();
      if (step.index >= elements.size()) return nullptr;
      current = &elements[step.index];
    }
  }
  return current;
}

}  // namespace

std::optional<JsonLocation> findJson(engine::HandleTable& handles, const std::wstring& name) {
  engine::HandleTable::Entry* entry = handles.find(name);
  if (!entry) return std::nullopt;
  JsonLocation location;
  if (entry->kind == JsonDocument::kind) {
    location.document = static_cast<JsonDocument*>(entry->object.get())->root;
    location.value = location.document.get();
  } else if (entry->kind == JsonNode::kind) {
    const auto* node = static_cast<JsonNode*>(entry->object.get());
    location.document = node->document.lock();
    if (!location.document) return std::nullopt;
    location.value = follow(*location.document, node->route);
    if (!location.value) return std::nullopt;
    location.route = node->route;
  } else {
    return std::nullopt;
  }
  return location;
}

void storeNode(engine::HandleTable& handles, const std::wstring& name, const JsonLocation& location) {
  auto node = std::make_unique<JsonNode>();
  node->document = location.document;
  node->route = location.route;
  handles.store(name, std::move(node), JsonNode::kind);
}

}  // namespace api::json::helpers
