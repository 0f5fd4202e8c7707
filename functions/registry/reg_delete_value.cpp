#include "engine/log.h"
#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

const Parameters& FunctionRegDeleteValue::parameters() {
  static const Parameters list =
      engine::joined({engine::text<&FunctionRegDeleteValue::value_>(L"value")}, KeyErrorFunction::parameters());
  return list;
}

void FunctionRegDeleteValue::execute() {
  clearResult();
  const std::wstring key = this->key(), value = expand(value_);
  engine::log(L"regDeleteValue function called for %p\\%s\\%s", root(), key.c_str(), value.c_str());
  platform::UniqueKey opened;
  uint32_t error = platform::openKey(rootKey(), key, platform::KeyAccess::Write, opened);
  if (error == 0) error = platform::deleteValue(opened, value);
  if (error != 0) fail(error);
  logEnd();
}

const engine::TagDoc FunctionRegDeleteValue::doc{
    L"Deletes the value `value` (empty: the key's default value) of `root`\\`key`; `key` and `value` are expanded when it runs.",
    L"regDeleteValue function called for %p\\%s\\%s\nregDeleteValue function end with %s. err:'%s'",
    L"Error text: `2` a missing key or value, `5` access denied, or another Windows code of the delete.",
    L"<regDeleteValue root=\"HKEY_CURRENT_USER\" key=\"Software\\Microsoft\\Windows\\CurrentVersion\\Run\" value=\"ContosoUpdater\"/>"};

}  // namespace api::registry
