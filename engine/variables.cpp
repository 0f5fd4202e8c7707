// rand_s is declared only when this comes before the first C runtime header.
#define _CRT_RAND_S
#include <stdlib.h>

#include "engine/variables.h"

#include <windows.h>
#include <shlwapi.h>

#include <algorithm>
#include <cwctype>

#include "engine/ascii.h"
#include "engine/handles.h"
#include "engine/integer.h"
#include "engine/os_type.h"
#include "platform/format.h"

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

}  // namespace

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
      out.append(std::to_wstring(randomNumber()));
      pos = close + 1;
    } else {
      const std::wstring reference = L"%" + name + L"%";
      std::wstring expanded = withGrowingBuffer(1024, [&](wchar_t* buffer, DWORD size) {
        return ExpandEnvironmentStringsW(reference.c_str(), buffer, size);
      });
      if (expanded.empty()) {
        // Copy the text up to the closing %, which may open the next reference.
        out.append(text.substr(open, close - open));
        pos = close;
        continue;
      }
      if (expanded.back() == L'\0') expanded.pop_back();
      if (PathFileExistsW(expanded.c_str())) {
        std::wstring longForm = withGrowingBuffer(
            1024, [&](wchar_t* buffer, DWORD size) { return GetLongPathNameW(expanded.c_str(), buffer, size); });
        if (!longForm.empty()) expanded = std::move(longForm);
      }
      out.append(expanded);
      pos = close + 1;
    }
  }
  return out;
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
