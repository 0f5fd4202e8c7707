#pragma once
// The registry in the program's native view: keys opened, created and deleted,
// values read, written, deleted and listed. Every call returns 0 or the Windows
// error code; the calls that change the registry pass through the fault seam.
#include <cstdint>
#include <string>
#include <vector>

#include "platform/flags.h"
#include "platform/owned.h"

namespace platform {

// The predefined keys a script can name.
enum class RootKey : uint8_t { ClassesRoot, CurrentUser, LocalMachine, Users, CurrentConfig };

// The root's predefined handle value, which the log shows (FFFFFFFF80000002
// for LocalMachine): 0x80000000 plus its number, sign-extended.
inline void* rootKeyValue(RootKey root) {
  static constexpr int32_t kValues[] = {INT32_MIN, INT32_MIN + 1, INT32_MIN + 2, INT32_MIN + 3, INT32_MIN + 5};
  return reinterpret_cast<void*>(static_cast<intptr_t>(kValues[static_cast<size_t>(root)]));
}

// A key to work below: a predefined root, or a key the program opened.
class KeyParent {
 public:
  KeyParent(RootKey root) : handle_(rootKeyValue(root)) {}
  KeyParent(const UniqueKey& key) : handle_(key.get()) {}
  void* handle() const { return handle_; }

 private:
  void* handle_;
};

// What a key is opened for: reading its values, changing them, listing its subkeys.
enum class KeyAccess : uint8_t { Read = 1, Write = 2, Enumerate = 4 };
template <>
inline constexpr bool kIsFlagSet<KeyAccess> = true;

// The registry's value types, with its own codes.
enum class ValueType : uint32_t {
  None = 0,
  Sz = 1,
  ExpandSz = 2,
  Binary = 3,
  Dword = 4,
  DwordBigEndian = 5,
  Link = 6,
  MultiSz = 7,
  ResourceList = 8,
  Qword = 11
};

uint32_t openKey(KeyParent parent, const std::wstring& path, KeyAccess access, UniqueKey& key);
// Creates the key, or finds it existing; the handle is closed at once.
uint32_t createKey(KeyParent parent, const std::wstring& path, bool isVolatile);
// Deletes one key that has no subkeys.
uint32_t deleteKey(KeyParent parent, const std::wstring& path);

struct RegistryData {
  ValueType type = ValueType::None;
  std::vector<uint8_t> bytes;
};
// The value's type and bytes; an empty name is the key's default value.
uint32_t queryValue(const UniqueKey& key, const std::wstring& name, RegistryData& data);
uint32_t setValue(const UniqueKey& key, const std::wstring& name, ValueType type, const std::vector<uint8_t>& bytes);
uint32_t deleteValue(const UniqueKey& key, const std::wstring& name);

// The names of the key's subkeys (or values) in the order the registry lists
// them; on an error other than the end of the list, the names so far.
uint32_t subkeyNames(const UniqueKey& key, std::vector<std::wstring>& names);
uint32_t valueNames(const UniqueKey& key, std::vector<std::wstring>& names);

}  // namespace platform
