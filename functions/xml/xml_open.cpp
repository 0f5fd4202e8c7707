#include <memory>

#include "engine/log.h"
#include "functions/xml/detail/cov_tiny_xml.h"
#include "functions/xml/functions.h"
#include "platform/error_text.h"
#include "platform/errors.h"

namespace api::xml {

const Parameters& FunctionXmlOpen::parameters() {
  static const Parameters list = {engine::text<&FunctionXmlOpen::path_>(L"path"),
      engine::newHandle<&FunctionXmlOpen::handle_>(L"handle", Need::NonEmpty)};
  return list;
}

// A document that cannot be read or parsed is not stored; the name keeps what it held.
void FunctionXmlOpen::execute() {
  clearResult();
  const std::wstring path = expand(path_);
  // No space in "'.handle:": the program's established wording, which
  // scripts and log readers match.
  engine::log(L"xmlOpen from '%s'.handle: %s", path.c_str(), handle_.c_str());
  auto document = std::make_unique<COVTinyXml>();
  if (document->load(path.c_str()))
    handles().store(handle_, std::move(document), COVTinyXml::kind);
  else
    fail(platform::lastErrorOr(platform::kErrorFileNotFound));
  logEnd();
}

const engine::TagDoc FunctionXmlOpen::doc{
    L"Loads the XML file `path`, expanded when it runs, into a document under the handle name `handle` (taken as written), replacing and freeing a document already under that name. A file that is not well-formed XML (a forbidden character reference, text after the root element) is refused; a failed open stores nothing, and the name keeps what it held.",
    L"xmlOpen from '%s'.handle: %s\nxmlOpen function end with %s. err:'%s'",
    L"Error text: `2` a missing file or one that is not well-formed XML, `3` a missing directory, `5` access denied, `32` a file in use, or another Windows code of the read.",
    L"<xmlOpen path=\"C:\\Program Files\\App\\app.config\" handle=\"cfg\">\n  <onerror><trace value=\"app.config not loaded: %error%\"/><exit code=\"1\"/></onerror>\n</xmlOpen>"};

}  // namespace api::xml
