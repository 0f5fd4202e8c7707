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
  if (const uint32_t error = platform::createKey(rootKey(), key, volatile_)) fail(error);
  logEnd();
}

const engine::TagDoc FunctionRegCreateKey::doc{
    L"Creates the key `root`\\`key` (`key` expanded when it runs) with any missing parents; an existing key is success and stays as it is. With `volatile=\"true\"` the keys it creates last only until Windows restarts.",
    L"regCreateKey function called for %p\\%s\nregCreateKey function end with %s. err:'%s'",
    L"Error text: `5` access denied, `1021` a lasting key under a volatile one, or another Windows code of the creation.",
    L"<regCreateKey root=\"HKEY_CURRENT_USER\" key=\"Software\\Contoso\\App\\Session\" volatile=\"true\">\n  <onerror><trace value=\"no session key: %error%\"/></onerror>\n</regCreateKey>"};

}  // namespace api::registry
