#pragma once
// The state a script's functions share while it runs.
#include <string>

#include "engine/handles.h"
#include "engine/variables.h"

namespace engine {

struct Runtime {
  HandleTable handles;
  VariableStore variables{handles};
  // Label to jump to when a failure has no handler; empty for none.
  std::wstring errorTarget;
};

}  // namespace engine
