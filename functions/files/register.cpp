#include "functions/families.h"

namespace api::files {

void registerFunctions(engine::FunctionRegistry& /*registry*/) {}

}  // namespace api::files
