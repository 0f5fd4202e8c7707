#include "engine/variables.h"

#include <memory>
#include <optional>

#include "engine/handles.h"
#include "engine/os_type.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/path.h"

namespace engine {
namespace {

// Looks "%name%" up in the environment; an existing path is given in its long
// form. Nothing when the environment call fails.
std::optional<std::wstring> environmentReference(const std::wstring& reference) {
  std::optional<std::wstring> expanded = platform::expandEnvironment(reference);
  if (!expanded) return std::nullopt;
  if (platform::pathExists(*expanded)) {
    if (std::optional<std::wstring> longForm = platform::longPathName(*expanded)) expanded = std::move(longForm);
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
  bool hasIndexStartingWith(std::wstring_view base, const std::wstring& prefix) override {
    IndexedCollection* values = collection(base);
    if (!values) return false;
    auto it = values->values.lower_bound(prefix);
    return it != values->values.end() && it->first.compare(0, prefix.size(), prefix) == 0;
  }
  std::wstring random() override { return std::to_wstring(platform::randomNumber() % 50000u); }
  // The environment cannot change during one expansion, so each short
  // reference is looked up once however often the text repeats it.
  std::optional<std::wstring> environment(std::wstring_view reference) override {
    if (reference.size() > kRemembered) return environmentReference(std::wstring(reference));
    auto it = environment_.find(reference);
    if (it == environment_.end())
      it = environment_.emplace(std::wstring(reference), environmentReference(std::wstring(reference))).first;
    return it->second;
  }

 private:
  IndexedCollection* collection(std::wstring_view base) {
    return store_.handles_.findAs<IndexedCollection>(std::wstring(base));
  }

  static constexpr size_t kRemembered = 256;
  VariableStore& store_;
  std::map<std::wstring, std::optional<std::wstring>, std::less<>> environment_;
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
  const std::wstring engine = platform::modulePath();
  std::wstring directory = platform::parentPath(engine);
  if (directory.empty() || directory.back() != L'\\') directory.push_back(L'\\');

  set(L"currentdir", platform::currentDirectory());
  set(L"enginefname", std::wstring(platform::fileName(engine)));
  set(L"enginedir", directory);
  set(L"arch", L"x64");
  set(L"os", osClassText());
  set(L"error", L"0");
}

}  // namespace engine
