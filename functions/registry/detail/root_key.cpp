#include "functions/registry/detail/root_key.h"

namespace api::registry::detail {

std::vector<std::wstring> rootNames() {
  return {L"HKEY_CLASSES_ROOT", L"HKEY_CURRENT_USER", L"HKEY_LOCAL_MACHINE", L"HKEY_USERS", L"HKEY_CURRENT_CONFIG"};
}

}  // namespace api::registry::detail
