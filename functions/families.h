#pragma once
#include "engine/registry.h"

namespace api {

// The registry with every family's tags, registered family by family.
engine::FunctionRegistry makeFunctionRegistry();

namespace base {
void registerFunctions(engine::FunctionRegistry& registry);
}
namespace files {
void registerFunctions(engine::FunctionRegistry& registry);
}
namespace json {
void registerFunctions(engine::FunctionRegistry& registry);
}
namespace processes {
void registerFunctions(engine::FunctionRegistry& registry);
}
namespace xml {
void registerFunctions(engine::FunctionRegistry& registry);
}
namespace services {
void registerFunctions(engine::FunctionRegistry& registry);
}

}  // namespace api
