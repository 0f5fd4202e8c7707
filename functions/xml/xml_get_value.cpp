#include <windows.h>

#include "engine/log.h"
#include "functions/xml/detail/context.h"
#include "functions/xml/functions.h"
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
    fail(ERROR_PATH_NOT_FOUND);
  }
  logEnd();
}

}  // namespace api::xml
