#include "engine/registry.h"

namespace engine {

bool FunctionRegistry::add(const wchar_t* name, Factory factory, FunctionKind kind) {
  if (!name || !*name || !factory) return false;
  return entries_.try_emplace(name, Entry{factory, kind}).second;
}

const FunctionRegistry::Entry* FunctionRegistry::lookup(const std::wstring& name) const {
  auto it = entries_.find(name);
  return it == entries_.end() ? nullptr : &it->second;
}

}  // namespace engine
