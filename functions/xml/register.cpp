#include "functions/families.h"

namespace api::xml {

void registerFunctions(engine::FunctionRegistry& /*registry*/) {}

}  // namespace api::xml
