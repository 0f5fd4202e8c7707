#include "functions/families.h"
#include "functions/xml/functions.h"

namespace api::xml {

using engine::create;

void registerFunctions(engine::FunctionRegistry& r) {
  r.registerRetError(L"xmlOpen", create<FunctionXmlOpen>);
  r.registerPlain(L"xmlClose", create<FunctionXmlClose>);
  r.registerRetError(L"xmlSave", create<FunctionXmlSave>);
  r.registerRetError(L"xmlAddChild", create<FunctionXmlAddChild>);
  r.registerRetError(L"xmlRemoveChild", create<FunctionXmlRemoveChild>);
  r.registerRetError(L"xmlSetValue", create<FunctionXmlSetValue>);
  r.registerRetError(L"xmlGetValue", create<FunctionXmlGetValue>);
  r.registerRetError(L"xmlGetElement", create<FunctionXmlGetElement>);
}

}  // namespace api::xml
