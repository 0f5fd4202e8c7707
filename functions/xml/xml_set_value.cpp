#include "engine/log.h"
#include "functions/xml/detail/context.h"
#include "functions/xml/functions.h"
#include "platform/errors.h"
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
    fail(platform::kErrorNotFound);
  logEnd();
}

const engine::TagDoc FunctionXmlSetValue::doc{
    L"Sets the value at `xpath` from the context of `handle` to `value`, both expanded when it runs: an element's children are replaced by the text, a text or comment node takes it, and `path/@name` sets that attribute, creating it when missing. A bare `@name` only sets an attribute that exists: write `./@name` to create one on the context element.",
    L"xmlSetValue in '%s' at '%s'. value: '%s'\nxmlSetValue function end with %s. err:'%s'",
    L"Error text: `6` an unknown or stale handle, `1168` a document without root element, nothing found to set, an attribute name that is no XML name (`@1bad`), or a `value` with a character XML forbids (a control character other than tab and line ends).",
    L"<xmlOpen path=\"%enginedir%app.config\" handle=\"cfg\"/>\n<xmlSetValue handle=\"cfg\" xpath=\"appSettings/add[@key='Mode']/@value\" value=\"Test\"/>\n<xmlSetValue handle=\"cfg\" xpath=\"appSettings/add[@key='Mode']/@enabled\" value=\"true\"/>"};

}  // namespace api::xml
