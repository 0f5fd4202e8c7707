#pragma once
// JSON documents and nodes in the handle table.
//
// A document owns its value tree. A node names a value inside a document by
// its route from the document's root (keys and array indexes) and is resolved
// again on every use: when an edit moves or removes the value, or the document
// is closed, the node simply stops referring to a JSON value instead of
// dangling.
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <picojson.h>

#include "engine/handles.h"

namespace api::json::helpers {

// One step from a value to a child: an object key (UTF-8) or an array index.
struct JsonStep {
  static constexpr size_t kKey = static_cast<size_t>(-1);
  JsonStep(std::string member) : key(std::move(member)) {}
  JsonStep(size_t element) : index(element) {}
  std::string key;
  size_t index = kKey;  // kKey for an object member
};

class JsonDocument final : public engine::HandleObject {
 public:
  static constexpr engine::HandleKind kind = engine::HandleKind::JsonDocument;
  explicit JsonDocument(picojson::value value) : root(std::make_shared<picojson::value>(std::move(value))) {}
  std::shared_ptr<picojson::value> root;
};

class JsonNode final : public engine::HandleObject {
 public:
  static constexpr engine::HandleKind kind = engine::HandleKind::JsonNode;
  std::weak_ptr<picojson::value> document;
  std::vector<JsonStep> route;
};

// A value reached through a handle, with what is needed to name it in a node.
struct JsonLocation {
  std::shared_ptr<picojson::value> document;  // keeps the tree alive while in use
  std::vector<JsonStep> route;
  picojson::value* value = nullptr;

  // Moves to a child and records the step.
  void enter(JsonStep step, picojson::value& child) {
    route.push_back(std::move(step));
    value = &child;
  }
};

// The value of a JSON document or node handle; nothing for any other name or
// kind, or for a node whose value is gone.
std::optional<JsonLocation> findJson(engine::HandleTable& handles, const std::wstring& name);

// The value when the handle holds one of picojson type T.
template <class T>
picojson::value* findJsonOf(engine::HandleTable& handles, const std::wstring& name) {
  std::optional<JsonLocation> found = findJson(handles, name);
  return found && found->value->is<T>() ? found->value : nullptr;
}

// Stores a node handle for the location (releasing any entry of that name).
void storeNode(engine::HandleTable& handles, const std::wstring& name, const JsonLocation& location);

}  // namespace api::json::helpers
