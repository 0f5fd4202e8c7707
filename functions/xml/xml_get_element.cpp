#include <memory>
#include <windows.h>

#include "engine/log.h"
#include "functions/xml/detail/context.h"
#include "functions/xml/functions.h"
#include "platform/text.h"

namespace api::xml {

const Parameters& FunctionXmlGetElement::parameters() {
  static const Parameters list = {engine::handle<&FunctionXmlGetElement::handle_>(L"handle"),
      engine::text<&FunctionXmlGetElement::xpath_>(L"xpath", Need::Optional),
      engine::newHandle<&FunctionXmlGetElement::destHandle_>(L"destHandle", Need::NonEmpty)};
  return list;
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
