#include "engine/log.h"
#include "functions/xml/detail/context.h"
#include "functions/xml/functions.h"
#include "platform/errors.h"
#include "platform/text.h"

namespace api::xml {

const Parameters& FunctionXmlGetValue::parameters() {
  static const Parameters list = {engine::text<&FunctionXmlGetValue::xpath_>(L"xpath"),
      engine::handle<&FunctionXmlGetValue::handle_>(L"handle"),
      engine::variable<&FunctionXmlGetValue::var_>(L"var")};
  return list;
}

void FunctionXmlGetValue::execute() {
  clearResult();
  const std::wstring xpath = expand(xpath_);
  engine::log(L"xmlGetValue in '%s' at '%s'. variable: '%s'", handle_.c_str(), xpath.c_str(), var_.c_str());
  Context context;
  if (const uint32_t error = findContext(handles(), handle_, context)) {
    fail(error);
  } else if (auto value = COVTinyXml::evaluateToString(*context.element, platform::toUtf8(xpath))) {
    variables().set(var_, platform::fromUtf8(*value));
  } else {
    fail(platform::kErrorPathNotFound);
  }
  logEnd();
}

const engine::TagDoc FunctionXmlGetValue::doc{
    L"Stores in `var` the XPath string value of `xpath`, expanded when it runs, from the context of `handle` (a document's root element, or the element of an element handle): the text of the first node found, an attribute's value, a number, `true` or `false`; an expression that finds nothing gives the empty text.",
    L"xmlGetValue in '%s' at '%s'. variable: '%s'\nxmlGetValue function end with %s. err:'%s'",
    L"Error text: `6` an unknown or stale handle, `1168` a document without root element, `3` an `xpath` that does not parse or cannot be evaluated (a namespace prefix, an unknown function); `var` then keeps what it had.",
    L"<xmlOpen path=\"%enginedir%app.config\" handle=\"cfg\"/>\n<xmlGetValue handle=\"cfg\" xpath=\"appSettings/add[@key='Mode']/@value\" var=\"mode\"/>\n<trace value=\"mode: %mode%\"/>"};

}  // namespace api::xml
