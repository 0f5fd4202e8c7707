#include "engine/log.h"
#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

// True exactly when the key opens; never fails.
void FunctionRegExistsKey::execute() {
  const std::wstring key = this->key();
  engine::log(L"regExistsKey function called for %p\\%s", root(), key.c_str());
  platform::UniqueKey opened;
  finish(platform::openKey(root(), key, KEY_QUERY_VALUE, opened) == 0);
}

}  // namespace api::registry
