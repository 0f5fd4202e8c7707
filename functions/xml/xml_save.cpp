#include "engine/log.h"
#include "functions/xml/detail/cov_tiny_xml.h"
#include "functions/xml/functions.h"
#include "platform/errors.h"

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
    fail(platform::kErrorInvalidHandle);
  else if (!document->save(path.empty() ? nullptr : path.c_str()))
    fail(document->saveError());
  logEnd();
}

const engine::TagDoc FunctionXmlSave::doc{
    L"Saves the document under `handle` to `path`, expanded when it runs (empty or absent: the file it was opened from), in TinyXML's layout: an element a line, indented 4 spaces a level up to 10 levels, CR LF line ends; values, comments, CDATA sections, the declaration and a byte-order mark are kept. The file is replaced only once the whole text is on the disk; on failure it stays as it was.",
    L"xmlSave in '%s'.handle: %s\nxmlSave function end with %s. err:'%s'",
    L"Error text: `6` `handle` holds no document (an element handle neither), or the Windows code of the step that failed, e.g. `3` a missing directory, `5` access denied (a read-only file, a directory), `32` a file in use.",
    L"<xmlOpen path=\"%enginedir%app.config\" handle=\"cfg\"/>\n<xmlSetValue handle=\"cfg\" xpath=\"appSettings/add[@key='Mode']/@value\" value=\"Production\"/>\n<xmlSave path=\"\" handle=\"cfg\">\n  <onerror><trace value=\"app.config not saved: %error%\"/></onerror>\n</xmlSave>"};

}  // namespace api::xml
