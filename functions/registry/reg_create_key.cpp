#include "engine/log.h"
#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

const Parameters& FunctionRegCreateKey::parameters() {
  static const Parameters list =
      engine::joined({engine::flag<&FunctionRegCreateKey::volatile_>(L"volatile")}, KeyErrorFunction::parameters());
  return list;
}

// Creates the key and any missing parents; an existing key is success. A
// volatile key lives until the system restarts.
void FunctionRegCreateKey::execute() {
  clearResult();
  const std::wstring key = this->key();
  engine::log(L"regCreateKey function called for %p\\%s", root(), key.c_str());
  if (const uint32_t error = platform::createKey(root(), key, volatile_)) fail(error);
  logEnd();
}

}  // namespace api::registry
