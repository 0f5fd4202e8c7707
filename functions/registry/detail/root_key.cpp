#include "functions/registry/detail/root_key.h"

namespace api::registry::detail {

std::vector<std::wstring> rootNames() {
  return {L"HKEY_CLASSES_ROOT", L"HKEY_CURRENT_USER", L"HKEY_LOCAL_MACHINE", L"HKEY_USERS", L"HKEY_CURRENT_CONFIG"};
}

HKEY rootKey(Root root) {
  static const HKEY kKeys[] = {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS,
                               HKEY_CURRENT_CONFIG};
  return kKeys[static_cast<size_t>(root)];
}

}  // namespace api::registry::detail
