#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

platform::KeyAccess FunctionRegGetKeys::access() const { return platform::KeyAccess::Enumerate; }

uint32_t FunctionRegGetKeys::list(const platform::UniqueKey& key, std::vector<std::wstring>& names) const {
  return platform::subkeyNames(key, names);
}

const engine::TagDoc FunctionRegGetKeys::doc{
    L"Stores in `var` the names of the subkeys of `root`\\`key`, each followed by `delim` (the last one too), in the order the registry lists them; a key without subkeys gives the empty text. `key` and `delim` are expanded when it runs; on failure `var` keeps what it had.",
    L"regGetKeys function called for %p\\%s store to %s\nregGetKeys function end with %s. err:'%s'",
    L"Error text: `2` a missing key, `5` access denied, or another Windows code of the listing.",
    L"<regGetKeys root=\"HKEY_LOCAL_MACHINE\" key=\"SOFTWARE\\Contoso\\App\\Plugins\" delim=\";\" var=\"plugins\"/>\n<trace value=\"plugins: %plugins%\"/>"};

}  // namespace api::registry
