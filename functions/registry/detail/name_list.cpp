#include "engine/log.h"
#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

const Parameters& NameList::parameters() {
  static const Parameters list = engine::joined(
      {engine::variable<&NameList::var_>(L"var", Need::NonEmpty), engine::text<&NameList::delim_>(L"delim")},
      KeyErrorFunction::parameters());
  return list;
}

// Every name followed by the delimiter, the last one too; `var` changes only
// when the whole list was read.
void NameList::execute() {
  clearResult();
  const std::wstring key = this->key(), delim = expand(delim_);
  engine::log(kNameListStart, name(), root(), key.c_str(), var_.c_str());
  platform::UniqueKey opened;
  std::vector<std::wstring> names;
  uint32_t error = platform::openKey(rootKey(), key, variant_.access, opened);
  if (error == 0) error = variant_.list(opened, names);
  if (error != 0) {
    fail(error);
  } else {
    std::wstring text;
    for (const std::wstring& n : names) text.append(n).append(delim);
    variables().set(var_, std::move(text));
  }
  logEnd();
}

}  // namespace api::registry
