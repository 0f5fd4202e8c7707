#pragma once
// Tag name -> factory and kind, for every script function.
#include <map>
#include <memory>
#include <string>

#include "engine/function.h"

namespace engine {

using Factory = std::unique_ptr<FunctionBase> (*)();

template <class T>
std::unique_ptr<FunctionBase> create() {
  return std::make_unique<T>();
}

class FunctionRegistry {
 public:
  struct Entry {
    Factory factory;
    FunctionKind kind;
  };

  // Each refuses (returns false, changes nothing) an empty name, a null
  // factory or a name already registered: the first registration wins.
  bool registerPlain(const wchar_t* name, Factory factory) { return add(name, factory, FunctionKind::Plain); }
  bool registerRetError(const wchar_t* name, Factory factory) { return add(name, factory, FunctionKind::Error); }
  bool registerRetBool(const wchar_t* name, Factory factory) { return add(name, factory, FunctionKind::Bool); }

  const Entry* lookup(const std::wstring& name) const;
  size_t size() const { return entries_.size(); }

 private:
  bool add(const wchar_t* name, Factory factory, FunctionKind kind);
  std::map<std::wstring, Entry, std::less<>> entries_;
};

}  // namespace engine
