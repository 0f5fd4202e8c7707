#include "platform/registry.h"

#include <windows.h>

#include <iterator>

#include "platform/changes.h"
#include "platform/fault.h"

namespace platform {
namespace {

// The longest key name is 255 characters, the longest value name 16,383.
constexpr DWORD kKeyNameBuffer = 256;
constexpr DWORD kValueNameBuffer = 16384;

// Calls enumerate(index, buffer, &length) for index 0, 1, ... until the end.
template <class Enumerate>
uint32_t collectNames(DWORD bufferSize, std::vector<std::wstring>& names, Enumerate enumerate) {
  std::wstring buffer(bufferSize, L'\0');
  for (DWORD index = 0;; ++index) {
    DWORD length = bufferSize;
    const uint32_t fault = injectedFault(Call::RegistryEnum);
    const LSTATUS status = fault ? static_cast<LSTATUS>(fault) : enumerate(index, buffer.data(), &length);
    if (status == ERROR_NO_MORE_ITEMS) return 0;
    if (status != ERROR_SUCCESS) return static_cast<uint32_t>(status);
    names.emplace_back(buffer.data(), length);
  }
}

HKEY hkey(KeyParent parent) { return static_cast<HKEY>(parent.handle()); }
HKEY hkey(const UniqueKey& key) { return static_cast<HKEY>(key.get()); }

REGSAM accessMask(KeyAccess access) {
  return (has(access, KeyAccess::Read) ? KEY_QUERY_VALUE : 0) | (has(access, KeyAccess::Write) ? KEY_SET_VALUE : 0) |
         (has(access, KeyAccess::Enumerate) ? KEY_ENUMERATE_SUB_KEYS : 0);
}

// A key's name for a what-if run's descriptions: a root's own name, or the
// name a key the program opened was remembered by.
std::wstring keyName(KeyParent parent) {
  static constexpr const wchar_t* kRoots[] = {L"HKEY_CLASSES_ROOT", L"HKEY_CURRENT_USER", L"HKEY_LOCAL_MACHINE",
                                               L"HKEY_USERS", L"HKEY_CURRENT_CONFIG"};
  for (size_t i = 0; i < std::size(kRoots); ++i)
    if (parent.handle() == rootKeyValue(static_cast<RootKey>(i))) return kRoots[i];
  return handleName(parent.handle());
}

std::wstring below(KeyParent parent, const std::wstring& path) { return keyName(parent) + L"\\" + path; }

}  // namespace

uint32_t openKey(KeyParent parent, const std::wstring& path, KeyAccess access, UniqueKey& key) {
  if (const uint32_t error = injectedFault(Call::RegistryOpen)) {
    key.reset();  // as a failed open leaves it
    return error;
  }
  HKEY opened = nullptr;
  // A what-if run also reads what a write would replace or delete.
  const REGSAM mask = accessMask(access) | (whatIf() ? KEY_QUERY_VALUE : 0);
  const LSTATUS status = RegOpenKeyExW(hkey(parent), path.c_str(), 0, mask, &opened);
  key.reset(opened);
  nameHandle(opened, below(parent, path));
  return static_cast<uint32_t>(status);
}

uint32_t createKey(KeyParent parent, const std::wstring& path, bool isVolatile) {
  if (const uint32_t error = injectedFault(Call::RegistryKey)) return error;
  if (whatIf()) {
    UniqueKey existing;
    if (openKey(parent, path, KeyAccess::Read, existing) == 0) return 0;  // there already: no change
    return wouldChange(Call::RegistryKey, L"create key " + below(parent, path));
  }
  HKEY created = nullptr;
  const DWORD options = isVolatile ? REG_OPTION_VOLATILE : REG_OPTION_NON_VOLATILE;
  DWORD disposition = 0;
  const auto status = static_cast<uint32_t>(
      RegCreateKeyExW(hkey(parent), path.c_str(), 0, nullptr, options, 0, nullptr, &created, &disposition));
  const UniqueKey key(created);
  // Finding the key there already changes nothing.
  return status == 0 && disposition == REG_OPENED_EXISTING_KEY ? 0 : noteChange(status);
}

uint32_t deleteKey(KeyParent parent, const std::wstring& path) {
  if (const uint32_t error = injectedFault(Call::RegistryKey)) return error;
  if (whatIf()) {
    UniqueKey existing;  // a key that is not there would not be deleted
    if (openKey(parent, path, KeyAccess::Read, existing) == ERROR_FILE_NOT_FOUND) return ERROR_FILE_NOT_FOUND;
    return wouldChange(Call::RegistryKey, L"delete key " + below(parent, path));
  }
  return noteChange(static_cast<uint32_t>(RegDeleteKeyW(hkey(parent), path.c_str())));
}

uint32_t queryValue(const UniqueKey& opened, const std::wstring& name, RegistryData& data) {
  const HKEY key = hkey(opened);
  DWORD size = 0;
  if (const uint32_t error = injectedFault(Call::RegistryQuery)) return error;
  LSTATUS status = RegQueryValueExW(key, name.c_str(), nullptr, nullptr, nullptr, &size);
  if (status != ERROR_SUCCESS) return static_cast<uint32_t>(status);
  data.bytes.assign(size, 0);
  DWORD type = 0;
  if (const uint32_t error = injectedFault(Call::RegistryQuery)) return error;
  status = RegQueryValueExW(key, name.c_str(), nullptr, &type, data.bytes.data(), &size);
  if (status != ERROR_SUCCESS) return static_cast<uint32_t>(status);
  data.type = static_cast<ValueType>(type);
  data.bytes.resize(size);
  return 0;
}

uint32_t setValue(const UniqueKey& key, const std::wstring& name, ValueType type, const std::vector<uint8_t>& bytes) {
  if (const uint32_t error = injectedFault(Call::RegistryWrite)) return error;
  if (whatIf())
    return wouldChange(Call::RegistryWrite, L"set value " + below(key, name) + L" (type " +
                                                std::to_wstring(static_cast<uint32_t>(type)) + L", " +
                                                std::to_wstring(bytes.size()) + L" bytes)");
  return noteChange(static_cast<uint32_t>(RegSetValueExW(hkey(key), name.c_str(), 0, static_cast<DWORD>(type),
                                                         bytes.data(), static_cast<DWORD>(bytes.size()))));
}

uint32_t deleteValue(const UniqueKey& key, const std::wstring& name) {
  if (const uint32_t error = injectedFault(Call::RegistryWrite)) return error;
  if (whatIf()) {
    // A value that is not there would not be deleted.
    const LSTATUS status = RegQueryValueExW(hkey(key), name.c_str(), nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_FILE_NOT_FOUND) return ERROR_FILE_NOT_FOUND;
    return wouldChange(Call::RegistryWrite, L"delete value " + below(key, name));
  }
  return noteChange(static_cast<uint32_t>(RegDeleteValueW(hkey(key), name.c_str())));
}

uint32_t subkeyNames(const UniqueKey& opened, std::vector<std::wstring>& names) {
  const HKEY key = hkey(opened);
  return collectNames(kKeyNameBuffer, names, [key](DWORD index, wchar_t* buffer, DWORD* length) {
    return RegEnumKeyExW(key, index, buffer, length, nullptr, nullptr, nullptr, nullptr);
  });
}

uint32_t valueNames(const UniqueKey& opened, std::vector<std::wstring>& names) {
  const HKEY key = hkey(opened);
  return collectNames(kValueNameBuffer, names, [key](DWORD index, wchar_t* buffer, DWORD* length) {
    return RegEnumValueW(key, index, buffer, length, nullptr, nullptr, nullptr, nullptr);
  });
}

}  // namespace platform
