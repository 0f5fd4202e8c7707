#include "functions/families.h"
#include "functions/xml/functions.h"

namespace api::xml {

using engine::tag;

void registerFunctions(engine::FunctionRegistry& r) {
  static const engine::Tag tags[] = {
      tag<FunctionXmlOpen>(L"xmlOpen"),
      tag<FunctionCloseHandle, kXmlClose>(L"xmlClose"),
      tag<FunctionXmlSave>(L"xmlSave"),
      tag<FunctionXmlAddChild>(L"xmlAddChild"),
      tag<FunctionXmlRemoveChild>(L"xmlRemoveChild"),
      tag<FunctionXmlSetValue>(L"xmlSetValue"),
      tag<FunctionXmlGetValue>(L"xmlGetValue"),
      tag<FunctionXmlGetElement>(L"xmlGetElement"),
  };
  r.add(tags);
}

}  // namespace api::xml
