#include "functions/families.h"

namespace api::json {

void registerFunctions(engine::FunctionRegistry& /*registry*/) {}

}  // namespace api::json
