#include "functions/processes/detail/impersonation.h"

#include "platform/impersonation.h"

namespace api::processes::detail {

Impersonation::~Impersonation() {
  if (!ended_) end();
}

uint32_t Impersonation::end() {
  ended_ = true;
  const uint32_t error = platform::revertToSelf();
  token_.reset();  // whatever the revert said
  return error;
}

void keepImpersonation(engine::Runtime& runtime, platform::UniqueToken token) {
  // Replacing the object would end the impersonation that just began.
  if (auto* current = static_cast<Impersonation*>(runtime.impersonation.get())) {
    current->replaceToken(std::move(token));
    return;
  }
  runtime.impersonation = std::make_unique<Impersonation>(std::move(token));
}

uint32_t endImpersonation(engine::Runtime& runtime) {
  std::unique_ptr<engine::RunState> current = std::move(runtime.impersonation);
  return current ? static_cast<Impersonation&>(*current).end() : platform::revertToSelf();
}

}  // namespace api::processes::detail
