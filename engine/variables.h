#pragma once
// Script variables and the expansion of %name% references in attribute texts.
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "engine/expansion.h"
#include "engine/variable_text.h"

namespace engine {

class HandleTable;

class VariableStore {
 public:
  explicit VariableStore(HandleTable& handles) : handles_(handles) {}

  // The value, or nothing when the variable (or indexed element) is unknown.
  // The view is valid until the store changes.
  std::optional<std::wstring_view> find(const std::wstring& name);
  // Unknown variables read as empty text.
  std::wstring get(const std::wstring& name);
  void set(const std::wstring& name, std::wstring value);
  // The stored value itself, to be edited in place; nullptr when unknown.
  VariableText* findText(const std::wstring& name);

  // Replaces %name% references by variables, %random%, or environment values.
  std::wstring expand(std::wstring_view text);
  // The same result, but a text that is a single reference to a variable gives
  // a view of its value instead of a copy (valid until the store changes);
  // other texts are expanded into `storage`.
  std::wstring_view expandView(std::wstring_view text, std::wstring& storage);

  // Empties the table and sets the built-in variables.
  void reset();

 private:
  // Resolves the references of one expansion from this store.
  class Source;

  std::map<std::wstring, VariableText, std::less<>> table_;
  HandleTable& handles_;
};

}  // namespace engine
