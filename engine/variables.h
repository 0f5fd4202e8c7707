#pragma once
// Script variables and the expansion of %name% references in attribute texts.
#include <map>
#include <string>
#include <string_view>

namespace engine {

class HandleTable;

class VariableStore {
 public:
  explicit VariableStore(HandleTable& handles) : handles_(handles) {}

  // The value, or nullptr when the variable (or indexed element) is unknown.
  const std::wstring* find(const std::wstring& name);
  // Unknown variables read as empty text.
  std::wstring get(const std::wstring& name);
  void set(const std::wstring& name, std::wstring value);

  // Replaces %name% references by variables, %random%, or environment values.
  std::wstring expand(std::wstring_view text);

  // Empties the table and sets the built-in variables.
  void reset();

 private:
  struct IndexedName {
    std::wstring base;
    std::wstring index;  // expanded and normalised
  };
  bool splitIndexed(const std::wstring& name, IndexedName& out);
  void expandReference(std::wstring_view name, std::wstring& out);

  std::map<std::wstring, std::wstring> table_;
  HandleTable& handles_;
};

// "%010d" for a decimal index, so numeric indexes sort numerically; other
// index texts are kept as they are.
std::wstring normaliseIndex(const std::wstring& index);

}  // namespace engine
