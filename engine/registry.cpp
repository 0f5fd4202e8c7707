#include "engine/registry.h"

namespace engine {

std::span<const wchar_t* const> handlerNames(FunctionKind kind) {
  static const wchar_t* const error[] = {L"onsuccess", L"onerror", L"onerrorspec"};
  static const wchar_t* const boolean[] = {L"onTrue", L"onFalse"};
  switch (kind) {
    case FunctionKind::Error: return error;
    case FunctionKind::Bool: return boolean;
    default: return {};
  }
}

bool FunctionRegistry::add(const Tag& tag) {
  if (!tag.name || !*tag.name || !tag.factory || !tag.parameters) return false;
  auto [it, added] = tags_.try_emplace(tag.name, tag);
  if (added) it->second.family = families_.empty() ? nullptr : families_.back();
  return added;
}

bool FunctionRegistry::add(std::span<const Tag> tags) {
  bool all = true;
  for (const Tag& tag : tags) all = add(tag) && all;
  return all;
}

const Tag* FunctionRegistry::lookup(const std::wstring& name) const {
  auto it = tags_.find(name);
  return it == tags_.end() ? nullptr : &it->second;
}

std::vector<const Tag*> FunctionRegistry::tags() const {
  std::vector<const Tag*> all;
  all.reserve(tags_.size());
  for (const auto& [name, tag] : tags_) all.push_back(&tag);
  return all;
}

}  // namespace engine
