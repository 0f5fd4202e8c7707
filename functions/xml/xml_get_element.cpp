#include <memory>
#include <windows.h>

#include "engine/log.h"
#include "functions/xml/context.h"
#include "functions/xml/functions.h"
#include "platform/text.h"

namespace api::xml {

bool FunctionXmlGetElement::readAttributes() {
  return readText(L"handle", handle_) && readText(L"xpath", xpath_, engine::Need::Optional) &&
         readText(L"destHandle", destHandle_, engine::Need::NonEmpty);
}

// An empty xpath takes the context element itself.
void FunctionXmlGetElement::execute() {
  clearResult();
  const std::wstring xpath = expand(xpath_);
  engine::log(L"xmlGetElement in '%s' at '%s'. destHandle: '%s'", handle_.c_str(), xpath.c_str(), destHandle_.c_str());
  Context context;
  if (const uint32_t error = findContext(handles(), handle_, context)) {
    fail(error);
  } else {
    const std::string expression = platform::toUtf8(xpath);
    TiXmlNode* node = COVTinyXml::findNode(*context.element, xpath.empty() ? nullptr : &expression);
    if (TiXmlElement* element = node ? node->ToElement() : nullptr)
      handles().store(destHandle_, std::make_unique<XmlElementHandle>(*element, *context.held), XmlElementHandle::kind);
    else
      fail(ERROR_PATH_NOT_FOUND);
  }
  logEnd(L"xmlGetValue");
}

}  // namespace api::xml
