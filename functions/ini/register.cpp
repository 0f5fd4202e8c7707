#include "functions/families.h"
#include "functions/ini/functions.h"

namespace api::ini {

using engine::tag;

void registerFunctions(engine::FunctionRegistry& r) {
  static const engine::Tag tags[] = {
      tag<FunctionIniGetValue>(L"iniGetValue"),
      tag<FunctionIniSetValue>(L"iniSetValue"),
  };
  r.add(tags);
}

}  // namespace api::ini
