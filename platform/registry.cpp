#include "platform/registry.h"

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

}  // namespace

uint32_t openKey(HKEY parent, const std::wstring& path, REGSAM access, UniqueKey& key) {
  if (const uint32_t error = injectedFault(Call::RegistryOpen)) {
    key.reset();  // as a failed open leaves it
    return error;
  }
  return static_cast<uint32_t>(RegOpenKeyExW(parent, path.c_str(), 0, access, key.put()));
}

uint32_t createKey(HKEY parent, const std::wstring& path, bool isVolatile) {
  if (const uint32_t error = injectedFault(Call::RegistryKey)) return error;
  UniqueKey key;
  const DWORD options = isVolatile ? REG_OPTION_VOLATILE : REG_OPTION_NON_VOLATILE;
  DWORD disposition = 0;
  const auto status = static_cast<uint32_t>(
      RegCreateKeyExW(parent, path.c_str(), 0, nullptr, options, 0, nullptr, key.put(), &disposition));
  // Finding the key there already changes nothing.
  return status == 0 && disposition == REG_OPENED_EXISTING_KEY ? 0 : noteChange(status);
}

uint32_t deleteKey(HKEY parent, const std::wstring& path) {
  if (const uint32_t error = injectedFault(Call::RegistryKey)) return error;
  return noteChange(static_cast<uint32_t>(RegDeleteKeyW(parent, path.c_str())));
}

uint32_t queryValue(HKEY key, const std::wstring& name, RegistryData& data) {
  DWORD size = 0;
  if (const uint32_t error = injectedFault(Call::RegistryQuery)) return error;
  LSTATUS status = RegQueryValueExW(key, name.c_str(), nullptr, nullptr, nullptr, &size);
  if (status != ERROR_SUCCESS) return static_cast<uint32_t>(status);
  data.bytes.assign(size, 0);
  DWORD type = 0;
  if (const uint32_t error = injectedFault(Call::RegistryQuery)) return error;
  status = RegQueryValueExW(key, name.c_str(), nullptr, &type, data.bytes.data(), &size);
  if (status != ERROR_SUCCESS) return static_cast<uint32_t>(status);
  data.type = type;
  data.bytes.resize(size);
  return 0;
}

uint32_t setValue(HKEY key, const std::wstring& name, uint32_t type, const std::vector<uint8_t>& bytes) {
  if (const uint32_t error = injectedFault(Call::RegistryWrite)) return error;
  return noteChange(static_cast<uint32_t>(
      RegSetValueExW(key, name.c_str(), 0, type, bytes.data(), static_cast<DWORD>(bytes.size()))));
}

uint32_t deleteValue(HKEY key, const std::wstring& name) {
  if (const uint32_t error = injectedFault(Call::RegistryWrite)) return error;
  return noteChange(static_cast<uint32_t>(RegDeleteValueW(key, name.c_str())));
}

uint32_t subkeyNames(HKEY key, std::vector<std::wstring>& names) {
  return collectNames(kKeyNameBuffer, names, [key](DWORD index, wchar_t* buffer, DWORD* length) {
    return RegEnumKeyExW(key, index, buffer, length, nullptr, nullptr, nullptr, nullptr);
  });
}

uint32_t valueNames(HKEY key, std::vector<std::wstring>& names) {
  return collectNames(kValueNameBuffer, names, [key](DWORD index, wchar_t* buffer, DWORD* length) {
    return RegEnumValueW(key, index, buffer, length, nullptr, nullptr, nullptr, nullptr);
  });
}

}  // namespace platform
