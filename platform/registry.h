#pragma once
// The registry in the program's native view: keys opened, created and deleted,
// values read, written, deleted and listed. Every call returns 0 or the Windows
// error code; the calls that change the registry pass through the fault seam.
#include <cstdint>
#include <string>
#include <vector>

#include "platform/owned.h"

namespace platform {

uint32_t openKey(HKEY parent, const std::wstring& path, REGSAM access, UniqueKey& key);
// Creates the key, or finds it existing; the handle is closed at once.
uint32_t createKey(HKEY parent, const std::wstring& path, bool isVolatile);
// Deletes one key that has no subkeys.
uint32_t deleteKey(HKEY parent, const std::wstring& path);

struct RegistryData {
  uint32_t type = 0;
  std::vector<uint8_t> bytes;
};
// The value's type and bytes; an empty name is the key's default value.
uint32_t queryValue(HKEY key, const std::wstring& name, RegistryData& data);
uint32_t setValue(HKEY key, const std::wstring& name, uint32_t type, const std::vector<uint8_t>& bytes);
uint32_t deleteValue(HKEY key, const std::wstring& name);

// The names of the key's subkeys (or values) in the order the registry lists
// them; on an error other than the end of the list, the names so far.
uint32_t subkeyNames(HKEY key, std::vector<std::wstring>& names);
uint32_t valueNames(HKEY key, std::vector<std::wstring>& names);

}  // namespace platform
