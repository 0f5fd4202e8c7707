#include "engine/log.h"
#include "functions/files/functions.h"

namespace api::files {

bool FunctionFileClose::readAttributes() { return readText(L"handle", handle_, engine::Need::NonEmpty); }

// Closing a name that holds nothing is no error.
void FunctionFileClose::execute() {
  engine::log(L"fileClose for handle %s", handle_.c_str());
  handles().close(handle_);
}

}  // namespace api::files
