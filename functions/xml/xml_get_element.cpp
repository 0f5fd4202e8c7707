#include <memory>

#include "engine/log.h"
#include "functions/xml/detail/context.h"
#include "functions/xml/functions.h"
#include "platform/errors.h"
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
      fail(platform::kErrorPathNotFound);
  }
  logEnd(L"xmlGetValue");
}

const engine::TagDoc FunctionXmlGetElement::doc{
    L"Stores under the handle name `destHandle` an element handle for the first element `xpath` finds from the context of `handle` (empty or absent: the context element itself), replacing what the name held. XPath given that handle starts at its element; the handle is refused once the element is removed or its document closed. It ends with `xmlGetValue`'s end line.",
    L"xmlGetElement in '%s' at '%s'. destHandle: '%s'\nxmlGetValue function end with %s. err:'%s'",
    L"Error text: `6` an unknown or stale handle, `1168` a document without root element, `3` `xpath` does not parse or finds no element; `destHandle` then keeps what it held.",
    L"<xmlOpen path=\"%enginedir%app.config\" handle=\"cfg\"/>\n<xmlGetElement handle=\"cfg\" xpath=\"servers/server[@name='alpha']\" destHandle=\"alpha\"/>\n<xmlSetValue handle=\"alpha\" xpath=\"./@port\" value=\"8443\"/>"};

}  // namespace api::xml
