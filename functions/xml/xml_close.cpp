#include "engine/log.h"
#include "functions/xml/functions.h"

namespace api::xml {

const Parameters& FunctionXmlClose::parameters() {
  static const Parameters list = {engine::handle<&FunctionXmlClose::handle_>(L"handle")};
  return list;
}

// Any entry of that name goes: a document is destroyed, an element handle
// frees nothing, an unknown name is no error.
void FunctionXmlClose::execute() {
  engine::log(L"xmlClose for handle: %s", handle_.c_str());
  handles().close(handle_);
}

}  // namespace api::xml
