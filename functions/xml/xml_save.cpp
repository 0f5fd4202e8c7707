#include <windows.h>

#include "engine/log.h"
#include "functions/xml/detail/cov_tiny_xml.h"
#include "functions/xml/functions.h"

namespace api::xml {

const Parameters& FunctionXmlSave::parameters() {
  static const Parameters list = {engine::text<&FunctionXmlSave::path_>(L"path", Need::Optional),
      engine::handle<&FunctionXmlSave::handle_>(L"handle", Need::NonEmpty)};
  return list;
}

// An empty path saves to the file the document was opened from.
void FunctionXmlSave::execute() {
  clearResult();
  const std::wstring path = expand(path_);
  // No space in "'.handle:": the program's established wording, which
  // scripts and log readers match.
  engine::log(L"xmlSave in '%s'.handle: %s", path.c_str(), handle_.c_str());
  COVTinyXml* document = handles().findAs<COVTinyXml>(handle_);
  if (!document)
    fail(ERROR_INVALID_HANDLE);
  else if (!document->save(path.empty() ? nullptr : path.c_str()))
    fail(document->saveError());
  logEnd();
}

}  // namespace api::xml
