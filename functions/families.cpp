#include "functions/families.h"

namespace api {

engine::FunctionRegistry makeFunctionRegistry() {
  engine::FunctionRegistry registry;
  base::registerFunctions(registry);
  files::registerFunctions(registry);
  json::registerFunctions(registry);
  xml::registerFunctions(registry);
  processes::registerFunctions(registry);
  services::registerFunctions(registry);
  return registry;
}

}  // namespace api
