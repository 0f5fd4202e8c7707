#include <windows.h>

#include "engine/log.h"
#include "functions/xml/detail/context.h"
#include "functions/xml/functions.h"
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
      fail(ERROR_NOT_FOUND);
    } else {
      context.held->dropSubtree(*node);
      node->Parent()->RemoveChild(node);
    }
  }
  logEnd(L"xmlAddChild");
}

}  // namespace api::xml
