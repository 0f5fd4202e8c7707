#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

platform::KeyAccess FunctionRegGetValues::access() const { return platform::KeyAccess::Read; }

uint32_t FunctionRegGetValues::list(const platform::UniqueKey& key, std::vector<std::wstring>& names) const {
  return platform::valueNames(key, names);
}

const engine::TagDoc FunctionRegGetValues::doc{
    L"Stores in `var` the names of the values of `root`\\`key`, each followed by `delim` (the last one too), in the order the registry lists them; a default value the key holds is an empty name, and a key without values gives the empty text. `key` and `delim` are expanded when it runs; on failure `var` keeps what it had.",
    L"regGetValues function called for %p\\%s store to %s\nregGetValues function end with %s. err:'%s'",
    L"Error text: `2` a missing key, `5` access denied, or another Windows code of the listing.",
    L"<regGetValues root=\"HKEY_CURRENT_USER\" key=\"Software\\Microsoft\\Windows\\CurrentVersion\\Run\" delim=\"|\" var=\"startup\"/>\n<trace value=\"started with Windows: %startup%\"/>"};

}  // namespace api::registry
