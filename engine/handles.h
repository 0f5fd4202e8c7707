#pragma once
// Named objects a script opens (documents, file streams, indexed variable
// collections) live here until the script closes them or the run ends.
#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "engine/variable_text.h"

namespace engine {

enum class HandleKind : uint32_t {
  XmlDocument = 1,
  XmlElement = 2,  // points into a document, which owns it
  IndexedCollection = 3,
  JsonDocument = 4,
  JsonNode = 5,  // points into a document, which owns it
  TextFile = 6,
};

// Base of every handle payload. A payload that only points into another
// object (an element of a document) owns nothing, so deleting it frees nothing.
class HandleObject {
 public:
  virtual ~HandleObject() = default;
};

// Indexed variables `name[index]` are kept per base name in one collection.
class IndexedCollection final : public HandleObject {
 public:
  static constexpr HandleKind kind = HandleKind::IndexedCollection;
  std::map<std::wstring, VariableText> values;
};

class HandleTable {
 public:
  struct Entry {
    std::unique_ptr<HandleObject> object;
    HandleKind kind;
  };

  Entry* find(const std::wstring& name);

  // The payload under `name` when it is of type T (T::kind), else nullptr.
  template <class T>
  T* findAs(const std::wstring& name) {
    Entry* entry = find(name);
    if (!entry || entry->kind != T::kind) return nullptr;
    return static_cast<T*>(entry->object.get());
  }

  // Replaces (and releases) any entry of that name; a null object just closes it.
  void store(const std::wstring& name, std::unique_ptr<HandleObject> object, HandleKind kind);
  void close(const std::wstring& name) { entries_.erase(name); }

  // Logs and releases every entry a script left open.
  void cleanUp();
  // Closes the text files a script left open, so that what it wrote takes
  // its place before the process ends at once.
  void closeTextFiles() { std::erase_if(entries_, [](const auto& item) { return item.second.kind == HandleKind::TextFile; }); }

 private:
  std::map<std::wstring, Entry> entries_;
};

}  // namespace engine
