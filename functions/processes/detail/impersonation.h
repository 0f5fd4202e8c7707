#pragma once
#include <cstdint>
#include <utility>

#include "engine/runtime.h"
#include "platform/owned.h"

namespace api::processes::detail {

// The interpreter's impersonation of another user: the token of the logon its
// thread acts as. It lives in the run's state, so the end of the run (the
// engine's reset) ends the impersonation and closes the token too.
class Impersonation final : public engine::RunState {
 public:
  explicit Impersonation(platform::UniqueToken token) : token_(std::move(token)) {}
  ~Impersonation() override;

  // A later logon the thread now acts as; the earlier token is closed.
  void replaceToken(platform::UniqueToken token) { token_ = std::move(token); }
  // Ends the impersonation and closes the token: 0 or the error of the revert.
  uint32_t end();

 private:
  platform::UniqueToken token_;
  bool ended_ = false;
};

// Keeps the token of a logon the thread now acts as; a token kept before is closed.
void keepImpersonation(engine::Runtime& runtime, platform::UniqueToken token);

// Ends the thread's impersonation, if any, and closes the kept token: 0 or the
// error of the revert.
uint32_t endImpersonation(engine::Runtime& runtime);

}  // namespace api::processes::detail
