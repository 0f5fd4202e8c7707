#include "functions/families.h"

namespace api {

engine::FunctionRegistry makeFunctionRegistry() {
  engine::FunctionRegistry registry;
  base::registerFunctions(registry);
  return registry;
}

}  // namespace api
