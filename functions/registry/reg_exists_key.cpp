#include "engine/log.h"
#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

// True exactly when the key opens; never fails.
void FunctionRegExistsKey::execute() {
  const std::wstring key = this->key();
  engine::log(L"regExistsKey function called for %p\\%s", root(), key.c_str());
  platform::UniqueKey opened;
  finish(platform::openKey(rootKey(), key, platform::KeyAccess::Read, opened) == 0);
}

const engine::TagDoc FunctionRegExistsKey::doc{
    L"Tells whether the key `root`\\`key` (`key` expanded when it runs) can be opened for reading. It never fails: a key the user may not read counts as missing.",
    L"regExistsKey function called for %p\\%s\nregExistsKey function end with %s.", L"True: the key exists and can be read. False: it is missing, or access is denied.",
    L"<regExistsKey root=\"HKEY_LOCAL_MACHINE\" key=\"SOFTWARE\\Contoso\\App\">\n  <onFalse><trace value=\"App is not installed\"/><exit code=\"0\"/></onFalse>\n</regExistsKey>"};

}  // namespace api::registry
