// rand_s is declared only when this comes before the first C runtime header.
#define _CRT_RAND_S
#include <stdlib.h>

#include "engine/variables.h"

#include <windows.h>
#include <shlwapi.h>

#include <memory>
#include <optional>

#include "engine/handles.h"
#include "engine/os_type.h"

namespace engine {
namespace {

// Calls a Win32 "fill this buffer" function, retrying once with the size it asks for.
template <class Call>
std::wstring withGrowingBuffer(size_t initial, Call call) {
  std::wstring buffer(initial, L'\0');
  DWORD length = call(buffer.data(), static_cast<DWORD>(buffer.size()));
  if (length > buffer.size()) {
    buffer.assign(length, L'\0');
    length = call(buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length > buffer.size()) return {};
  }
  buffer.resize(length);
  return buffer;
}

uint32_t randomNumber() {
  unsigned int value = 0;
  rand_s(&value);
  return (value + GetTickCount() + GetCurrentProcessId()) % 50000u;
}

std::wstring modulePath() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return path;
}

// Looks "%name%" up in the environment; an existing path is given in its long
// form. Nothing when the environment call fails.
std::optional<std::wstring> environmentReference(const std::wstring& reference) {
  std::wstring expanded = withGrowingBuffer(
      1024, [&](wchar_t* buffer, DWORD size) { return ExpandEnvironmentStringsW(reference.c_str(), buffer, size); });
  if (expanded.empty()) return std::nullopt;
  if (expanded.back() == L'\0') expanded.pop_back();
  if (PathFileExistsW(expanded.c_str())) {
    std::wstring longForm = withGrowingBuffer(
        1024, [&](wchar_t* buffer, DWORD size) { return GetLongPathNameW(expanded.c_str(), buffer, size); });
    if (!longForm.empty()) expanded = std::move(longForm);
  }
  return expanded;
}

}  // namespace

class VariableStore::Source final : public ExpansionSource {
 public:
  explicit Source(VariableStore& store) : store_(store) {}

  std::optional<std::wstring_view> variable(std::wstring_view name) override {
    auto it = store_.table_.find(name);
    if (it == store_.table_.end()) return std::nullopt;
    return it->second.view();
  }
  bool hasCollection(std::wstring_view base) override { return collection(base) != nullptr; }
  std::optional<std::wstring_view> element(std::wstring_view base, const std::wstring& index) override {
    IndexedCollection* values = collection(base);
    if (!values) return std::nullopt;
    auto it = values->values.find(index);
    if (it == values->values.end()) return std::nullopt;
    return it->second.view();
  }
  std::wstring random() override { return std::to_wstring(randomNumber()); }
  std::optional<std::wstring> environment(std::wstring_view reference) override {
    return environmentReference(std::wstring(reference));
  }

 private:
  IndexedCollection* collection(std::wstring_view base) {
    return store_.handles_.findAs<IndexedCollection>(std::wstring(base));
  }

  VariableStore& store_;
};

VariableText* VariableStore::findText(const std::wstring& name) {
  const auto indexed = splitIndexedName(name);
  if (!indexed) {
    auto it = table_.find(name);
    return it == table_.end() ? nullptr : &it->second;
  }
  auto* collection = handles_.findAs<IndexedCollection>(std::wstring(indexed->base));
  if (!collection) return nullptr;
  auto it = collection->values.find(normaliseIndex(expand(indexed->index)));
  return it == collection->values.end() ? nullptr : &it->second;
}

std::optional<std::wstring_view> VariableStore::find(const std::wstring& name) {
  const VariableText* text = findText(name);
  if (!text) return std::nullopt;
  return text->view();
}

std::wstring VariableStore::get(const std::wstring& name) {
  const auto value = find(name);
  return value ? std::wstring(*value) : std::wstring();
}

void VariableStore::set(const std::wstring& name, std::wstring value) {
  const auto indexed = splitIndexedName(name);
  if (!indexed) {
    table_.insert_or_assign(name, VariableText(std::move(value)));
    return;
  }
  const std::wstring base(indexed->base);
  std::wstring index = normaliseIndex(expand(indexed->index));
  auto* collection = handles_.findAs<IndexedCollection>(base);
  if (!collection) {
    // A handle of another kind under that name is replaced, never reinterpreted.
    auto created = std::make_unique<IndexedCollection>();
    collection = created.get();
    handles_.store(base, std::move(created), HandleKind::IndexedCollection);
  }
  collection->values.insert_or_assign(std::move(index), VariableText(std::move(value)));
}

std::wstring VariableStore::expand(std::wstring_view text) {
  Source source(*this);
  return expandReferences(text, source);
}

std::wstring_view VariableStore::expandView(std::wstring_view text, std::wstring& storage) {
  if (isSingleReference(text))
    if (const auto value = find(std::wstring(text.substr(1, text.size() - 2)))) return *value;
  storage = expand(text);
  return storage;
}

void VariableStore::reset() {
  table_.clear();
  wchar_t current[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, current);
  const std::wstring engine = modulePath();
  std::wstring directory = engine;
  PathRemoveFileSpecW(directory.data());
  directory.resize(wcslen(directory.c_str()));
  if (directory.empty() || directory.back() != L'\\') directory.push_back(L'\\');

  set(L"currentdir", current);
  set(L"enginefname", PathFindFileNameW(engine.c_str()));
  set(L"enginedir", directory);
  set(L"arch", L"x64");
  set(L"os", osClassText());
  set(L"error", L"0");
}

}  // namespace engine
