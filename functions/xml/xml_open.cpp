#include <memory>
#include <windows.h>

#include "engine/log.h"
#include "functions/xml/detail/cov_tiny_xml.h"
#include "functions/xml/functions.h"
#include "platform/error_text.h"

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
    fail(platform::lastErrorOr(ERROR_FILE_NOT_FOUND));
  logEnd();
}

}  // namespace api::xml
