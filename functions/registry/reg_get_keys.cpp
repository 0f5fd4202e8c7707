#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

REGSAM FunctionRegGetKeys::access() const { return KEY_ENUMERATE_SUB_KEYS; }

uint32_t FunctionRegGetKeys::list(HKEY key, std::vector<std::wstring>& names) const {
  return platform::subkeyNames(key, names);
}

}  // namespace api::registry
