#include "engine/variables.h"

#include <algorithm>
#include <cwctype>

#include "engine/ascii.h"
#include "engine/handles.h"
#include "engine/integer.h"
#include "engine/os_type.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/format.h"
#include "platform/path.h"

namespace engine {

std::wstring normaliseIndex(const std::wstring& index) {
  if (index.empty() || !std::all_of(index.begin(), index.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; }))
    return index;
  return platform::format(L"%010d", toInt(index));
}

bool VariableStore::splitIndexed(const std::wstring& name, IndexedName& out) {
  if (name.size() < 4 || name.back() != L']') return false;
  const size_t open = name.find(L'[', 1);
  if (open == std::wstring::npos || open + 2 > name.size() - 1) return false;
  out.base = name.substr(0, open);
  out.index = normaliseIndex(expand(std::wstring_view(name).substr(open + 1, name.size() - open - 2)));
  return true;
}

const std::wstring* VariableStore::find(const std::wstring& name) {
  IndexedName indexed;
  if (splitIndexed(name, indexed)) {
    auto* collection = handles_.findAs<IndexedCollection>(indexed.base);
    if (!collection) return nullptr;
    auto it = collection->values.find(indexed.index);
    return it == collection->values.end() ? nullptr : &it->second;
  }
  auto it = table_.find(name);
  return it == table_.end() ? nullptr : &it->second;
}

std::wstring VariableStore::get(const std::wstring& name) {
  const std::wstring* value = find(name);
  return value ? *value : std::wstring();
}

void VariableStore::set(const std::wstring& name, std::wstring value) {
  IndexedName indexed;
  if (!splitIndexed(name, indexed)) {
    table_.insert_or_assign(name, std::move(value));
    return;
  }
  auto* collection = handles_.findAs<IndexedCollection>(indexed.base);
  if (!collection) {
    // A handle of another kind under that name is replaced, never reinterpreted.
    auto created = std::make_unique<IndexedCollection>();
    collection = created.get();
    handles_.store(indexed.base, std::move(created), HandleKind::IndexedCollection);
  }
  collection->values.insert_or_assign(indexed.index, std::move(value));
}

std::wstring VariableStore::expand(std::wstring_view text) {
  std::wstring out;
  size_t pos = 0;
  while (pos < text.size()) {
    const size_t open = text.find(L'%', pos);
    if (open == std::wstring_view::npos) {
      out.append(text.substr(pos));
      break;
    }
    out.append(text.substr(pos, open - pos));
    if (open + 1 < text.size() && text[open + 1] == L'%') {
      out.push_back(L'%');
      pos = open + 2;
      continue;
    }
    // The closing % is the first one outside square brackets, so an index may
    // hold references of its own: %list[%i%]%.
    size_t close = std::wstring_view::npos;
    int depth = 0;
    for (size_t i = open + 1; i < text.size(); ++i) {
      if (text[i] == L'[')
        ++depth;
      else if (text[i] == L']')
        --depth;
      else if (text[i] == L'%' && depth == 0) {
        close = i;
        break;
      }
    }
    if (close == std::wstring_view::npos) {
      out.push_back(L'%');
      pos = open + 1;
      continue;
    }
    const std::wstring name(text.substr(open + 1, close - open - 1));
    if (const std::wstring* value = find(name)) {
      out.append(*value);
      pos = close + 1;
    } else if (equalsIgnoreAsciiCase(name, L"random")) {
      out.append(std::to_wstring(platform::randomNumber() % 50000u));
      pos = close + 1;
    } else {
      std::optional<std::wstring> expanded = platform::expandEnvironment(L"%" + name + L"%");
      if (!expanded) {
        // Copy the text up to the closing %, which may open the next reference.
        out.append(text.substr(open, close - open));
        pos = close;
        continue;
      }
      if (platform::pathExists(*expanded)) {
        if (std::optional<std::wstring> longForm = platform::longPathName(*expanded)) expanded = std::move(longForm);
      }
      out.append(*expanded);
      pos = close + 1;
    }
  }
  return out;
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
