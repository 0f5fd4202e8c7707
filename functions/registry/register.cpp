#include "functions/families.h"
#include "functions/registry/functions.h"

namespace api::registry {

using engine::tag;

void registerFunctions(engine::FunctionRegistry& r) {
  static const engine::Tag tags[] = {
      tag<FunctionRegRead>(L"regRead"),
      tag<NameList, kRegGetKeys>(L"regGetKeys"),
      tag<NameList, kRegGetValues>(L"regGetValues"),
      tag<FunctionRegWrite>(L"regWrite"),
      tag<FunctionRegExistsKey>(L"regExistsKey"),
      tag<FunctionRegCreateKey>(L"regCreateKey"),
      tag<FunctionRegDeleteKey>(L"regDeleteKey"),
      tag<FunctionRegDeleteValue>(L"regDeleteValue"),
  };
  r.add(tags);
}

}  // namespace api::registry
