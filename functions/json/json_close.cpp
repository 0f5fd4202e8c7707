#include "functions/json/functions.h"

namespace api::json {

const Parameters& FunctionJsonClose::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonClose::handle_>(L"handle")};
  return list;
}

// Releases whatever the name holds; an unknown name is no error.
void FunctionJsonClose::execute() {
  engine::log(L"jsonClose for handle %s", handle_.c_str());
  handles().close(handle_);
}

}  // namespace api::json
