#include "engine/log.h"
#include "functions/registry/functions.h"
#include "platform/errors.h"
#include "platform/registry.h"

namespace api::registry {
namespace {

// Deletes parent\name with everything below it, children first, logging each
// key as it goes; the first failure ends the delete with its code. A key that
// cannot be listed is still deleted if it can be; if not, the listing's code
// is the first.
uint32_t deleteTree(platform::KeyParent parent, const std::wstring& name) {
  platform::UniqueKey key;
  const uint32_t listError = platform::openKey(parent, name, platform::KeyAccess::Read | platform::KeyAccess::Enumerate, key);
  if (listError != 0) {
    engine::log(L"Cannot enumerate registry keys for '%s'", name.c_str());
  } else {
    // The names are read first: deleting while enumerating would shift the indexes.
    std::vector<std::wstring> children;
    if (const uint32_t error = platform::subkeyNames(key, children)) return error;
    for (const std::wstring& child : children)
      if (const uint32_t error = deleteTree(key, child)) return error;
    key.reset();
  }
  engine::log(L"Deleting subkey '%s'", name.c_str());
  const uint32_t error = platform::deleteKey(parent, name);
  return error != 0 && listError != 0 ? listError : error;
}

}  // namespace

void FunctionRegDeleteKey::execute() {
  clearResult();
  const std::wstring key = this->key();
  engine::log(L"regDeleteKey function called for %p\\%s", root(), key.c_str());
  // An empty key (a variable that expanded to nothing) would name the root
  // itself, and the delete would take everything below it.
  if (key.find_first_not_of(L'\\') == std::wstring::npos)
    fail(platform::kErrorInvalidParameter);
  else if (const uint32_t error = deleteTree(rootKey(), key))
    fail(error);
  logEnd();
}

const engine::TagDoc FunctionRegDeleteKey::doc{
    L"Deletes the key `root`\\`key` (`key` expanded when it runs) with everything below it, children first, logging each key as it goes. It stops at the first key it cannot delete; the keys deleted before stay deleted. A `key` that expands to nothing (or only backslashes) would name the root itself, and fails with 87 without deleting anything.",
    L"regDeleteKey function called for %p\\%s\nCannot enumerate registry keys for '%s'\nDeleting subkey '%s'\nregDeleteKey function end with %s. err:'%s'",
    L"Error text: the code of the first key that could not be listed or deleted: `2` a missing key, `5` access denied; `87` for an empty `key`.",
    L"<regDeleteKey root=\"HKEY_CURRENT_USER\" key=\"Software\\Contoso\\OldApp\">\n  <onerrorspec err=\"2\"><trace value=\"OldApp was already removed\"/></onerrorspec>\n</regDeleteKey>"};

}  // namespace api::registry
