#include "functions/families.h"
#include "functions/json/functions.h"

namespace api::json {

using engine::tag;

void registerFunctions(engine::FunctionRegistry& r) {
  static const engine::Tag tags[] = {
      tag<FunctionJsonOpen>(L"jsonOpen"),
      tag<FunctionCloseHandle, kJsonClose>(L"jsonClose"),
      tag<FunctionJsonSave>(L"jsonSave"),
      tag<FunctionJsonGetTypeFromObject>(L"jsonGetTypeFromObject"),
      tag<FunctionJsonGetTypeFromArray>(L"jsonGetTypeFromArray"),
      tag<FunctionJsonGetScalarFromObject>(L"jsonGetScalarFromObject"),
      tag<FunctionJsonGetArrayFromObject>(L"jsonGetArrayFromObject"),
      tag<FunctionJsonGetScalarFromArray>(L"jsonGetScalarFromArray"),
      tag<FunctionJsonGetNonScalarFromArray>(L"jsonGetNonScalarFromArray"),
      tag<FunctionJsonGetArrayLength>(L"jsonGetArrayLength"),
      tag<FunctionJsonInsertScalarIntoObject>(L"jsonInsertScalarIntoObject"),
      tag<FunctionJsonInsertScalarIntoArray>(L"jsonInsertScalarIntoArray"),
      tag<FunctionJsonInsertEmptyNonScalarIntoObject>(L"jsonInsertEmptyNonScalarIntoObject"),
      tag<FunctionJsonInsertEmptyNonScalarIntoArray>(L"jsonInsertEmptyNonScalarIntoArray"),
      tag<FunctionJsonRemoveFieldFromObject>(L"jsonRemoveFieldFromObject"),
      tag<FunctionJsonRemoveFieldFromArray>(L"jsonRemoveFieldFromArray"),
  };
  r.add(tags);
}

}  // namespace api::json
