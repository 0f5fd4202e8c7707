#include "engine/log.h"
#include "functions/xml/detail/context.h"
#include "functions/xml/functions.h"
#include "platform/errors.h"
#include "platform/text.h"

namespace api::xml {

const Parameters& FunctionXmlRemoveChild::parameters() {
  static const Parameters list = {engine::handle<&FunctionXmlRemoveChild::handle_>(L"handle"),
      engine::text<&FunctionXmlRemoveChild::xpath_>(L"xpath")};
  return list;
}

void FunctionXmlRemoveChild::execute() {
  clearResult();
  const std::wstring xpath = expand(xpath_);
  engine::log(L"xmlRemoveChild in '%s' at '%s'", handle_.c_str(), xpath.c_str());
  Context context;
  if (const uint32_t error = findContext(handles(), handle_, context)) {
    fail(error);
  } else {
    const std::string expression = platform::toUtf8(xpath);
    TiXmlNode* node = COVTinyXml::findNode(*context.element, &expression);
    if (!node || !node->Parent()) {
      fail(platform::kErrorNotFound);
    } else {
      context.held->dropSubtree(*node);
      node->Parent()->RemoveChild(node);
    }
  }
  logEnd(L"xmlAddChild");
}

const engine::TagDoc FunctionXmlRemoveChild::doc{
    L"Removes the first node `xpath` (expanded when it runs) finds from the context of `handle`, with everything below it; element handles into the removed part are refused from then on. It ends with `xmlAddChild`'s end line.",
    L"xmlRemoveChild in '%s' at '%s'\nxmlAddChild function end with %s. err:'%s'",
    L"Error text: `6` an unknown or stale handle, `1168` a document without root element, or `xpath` finds nothing it can remove (also when it does not parse or finds an attribute).",
    L"<xmlOpen path=\"%enginedir%app.config\" handle=\"cfg\"/>\n<xmlRemoveChild handle=\"cfg\" xpath=\"servers/server[@name='old']\">\n  <onerrorspec err=\"1168\"><trace value=\"no old server entry\"/></onerrorspec>\n</xmlRemoveChild>"};

}  // namespace api::xml
