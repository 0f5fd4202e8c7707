#include "functions/json/functions.h"

namespace api::json {

bool FunctionJsonClose::readAttributes() { return readText(L"handle", handle_); }

// Releases whatever the name holds; an unknown name is no error.
void FunctionJsonClose::execute() {
  engine::log(L"jsonClose for handle %s", handle_.c_str());
  handles().close(handle_);
}

}  // namespace api::json
