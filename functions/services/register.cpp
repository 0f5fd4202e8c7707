#include "functions/families.h"
#include "functions/services/functions.h"

namespace api::services {

using engine::tag;

void registerFunctions(engine::FunctionRegistry& r) {
  static const engine::Tag tags[] = {
      tag<ServiceStateChange, kServiceStart>(L"serviceStart"),
      tag<ServiceStateChange, kServiceStop>(L"serviceStop"),
      tag<FunctionServiceDelete>(L"serviceDelete"),
      tag<FunctionServiceCreate>(L"serviceCreate"),
  };
  r.add(tags);
}

}  // namespace api::services
