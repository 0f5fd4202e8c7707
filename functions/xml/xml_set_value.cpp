#include <windows.h>

#include "engine/log.h"
#include "functions/xml/detail/context.h"
#include "functions/xml/functions.h"
#include "platform/text.h"

namespace api::xml {

const Parameters& FunctionXmlSetValue::parameters() {
  static const Parameters list = {engine::handle<&FunctionXmlSetValue::handle_>(L"handle"),
      engine::text<&FunctionXmlSetValue::xpath_>(L"xpath"),
      engine::text<&FunctionXmlSetValue::value_>(L"value")};
  return list;
}

void FunctionXmlSetValue::execute() {
  clearResult();
  const std::wstring xpath = expand(xpath_), value = expand(value_);
  engine::log(L"xmlSetValue in '%s' at '%s'. value: '%s'", handle_.c_str(), xpath.c_str(), value.c_str());
  Context context;
  if (const uint32_t error = findContext(handles(), handle_, context))
    fail(error);
  else if (!COVTinyXml::setValue(*context.element, platform::toUtf8(xpath), platform::toUtf8(value), *context.held))
    fail(ERROR_NOT_FOUND);
  logEnd();
}

}  // namespace api::xml
