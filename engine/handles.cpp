#include "engine/handles.h"

#include "engine/log.h"
#include "engine/log_lines.h"

namespace engine {

HandleTable::Entry* HandleTable::find(const std::wstring& name) {
  auto it = entries_.find(name);
  return it == entries_.end() ? nullptr : &it->second;
}

void HandleTable::store(const std::wstring& name, std::unique_ptr<HandleObject> object, HandleKind kind) {
  entries_.erase(name);
  if (object) entries_.emplace(name, Entry{std::move(object), kind});
}

void HandleTable::cleanUp() {
  for (auto& [name, entry] : entries_)
    log(kFreeingLeak, static_cast<void*>(entry.object.get()), static_cast<int>(entry.kind));
  entries_.clear();
}

}  // namespace engine
