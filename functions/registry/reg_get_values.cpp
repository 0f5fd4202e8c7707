#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

REGSAM FunctionRegGetValues::access() const { return KEY_QUERY_VALUE; }

uint32_t FunctionRegGetValues::list(HKEY key, std::vector<std::wstring>& names) const {
  return platform::valueNames(key, names);
}

}  // namespace api::registry
