#include "engine/log_lines.h"
#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

namespace {

const engine::TagDoc doc{
    L"Stores in `var` the names of the subkeys of `root`\\`key`, each followed by `delim` (the last one too), in the order the registry lists them; a key without subkeys gives the empty text. `key` and `delim` are expanded when it runs; on failure `var` keeps what it had.",
    {kNameListStart.as(L"regGetKeys"), engine::kErrorEnd.as(L"regGetKeys")},
    L"Error text: `2` a missing key, `5` access denied, or another Windows code of the listing.",
    L"<regGetKeys root=\"HKEY_LOCAL_MACHINE\" key=\"SOFTWARE\\Contoso\\App\\Plugins\" delim=\";\" var=\"plugins\"/>\n<trace value=\"plugins: %plugins%\"/>"};

}  // namespace

const NameList::Variant kRegGetKeys{platform::KeyAccess::Enumerate, platform::subkeyNames, doc};

}  // namespace api::registry
