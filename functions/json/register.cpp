#include "functions/families.h"
#include "functions/json/functions.h"

namespace api::json {

using engine::create;

void registerFunctions(engine::FunctionRegistry& r) {
  r.registerRetBool(L"jsonOpen", create<FunctionJsonOpen>);
  r.registerPlain(L"jsonClose", create<FunctionJsonClose>);
  r.registerRetBool(L"jsonSave", create<FunctionJsonSave>);
  r.registerRetBool(L"jsonGetTypeFromObject", create<FunctionJsonGetTypeFromObject>);
  r.registerRetBool(L"jsonGetTypeFromArray", create<FunctionJsonGetTypeFromArray>);
  r.registerRetBool(L"jsonGetScalarFromObject", create<FunctionJsonGetScalarFromObject>);
  r.registerRetBool(L"jsonGetArrayFromObject", create<FunctionJsonGetArrayFromObject>);
  r.registerRetBool(L"jsonGetScalarFromArray", create<FunctionJsonGetScalarFromArray>);
  r.registerRetBool(L"jsonGetNonScalarFromArray", create<FunctionJsonGetNonScalarFromArray>);
  r.registerRetBool(L"jsonGetArrayLength", create<FunctionJsonGetArrayLength>);
  r.registerRetBool(L"jsonInsertScalarIntoObject", create<FunctionJsonInsertScalarIntoObject>);
  r.registerRetBool(L"jsonInsertScalarIntoArray", create<FunctionJsonInsertScalarIntoArray>);
  r.registerRetBool(L"jsonInsertEmptyNonScalarIntoObject", create<FunctionJsonInsertEmptyNonScalarIntoObject>);
  r.registerRetBool(L"jsonInsertEmptyNonScalarIntoArray", create<FunctionJsonInsertEmptyNonScalarIntoArray>);
  r.registerRetBool(L"jsonRemoveFieldFromObject", create<FunctionJsonRemoveFieldFromObject>);
  r.registerRetBool(L"jsonRemoveFieldFromArray", create<FunctionJsonRemoveFieldFromArray>);
}

}  // namespace api::json
