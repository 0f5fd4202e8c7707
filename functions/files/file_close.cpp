#include "engine/log.h"
#include "functions/files/functions.h"

namespace api::files {

const Parameters& FunctionFileClose::parameters() {
  static const Parameters list = {engine::handle<&FunctionFileClose::handle_>(L"handle", Need::NonEmpty)};
  return list;
}

// Closing a name that holds nothing is no error.
void FunctionFileClose::execute() {
  engine::log(L"fileClose for handle %s", handle_.c_str());
  handles().close(handle_);
}

}  // namespace api::files
