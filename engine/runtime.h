#pragma once
// The state a script's functions share while it runs.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/handles.h"
#include "engine/variables.h"

namespace engine {

// State a family keeps for the rest of a run and gives up when it is
// destroyed (the processes family's impersonation of another user).
class RunState {
 public:
  virtual ~RunState() = default;
};

struct Runtime {
  HandleTable handles;
  VariableStore variables{handles};
  // Label to jump to when a failure has no handler; empty for none.
  std::wstring errorTarget;
  // Why preparation refused the last element's attributes, for the checker.
  std::wstring refusal;
  // The impersonation processImpersonateUser began; the engine's reset ends it.
  std::unique_ptr<RunState> impersonation;
  // While the run is recorded (/jsonlog): each text the running function
  // expanded and what it became, and whether it found nothing to change.
  bool recording = false;
  std::vector<std::pair<std::wstring, std::wstring>> expansions;
  bool foundNothingToChange = false;
};

}  // namespace engine
