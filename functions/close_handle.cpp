#include "functions/close_handle.h"

#include "engine/log.h"

namespace api {

const engine::Parameters& FunctionCloseHandle::parameters(const Variant& variant) {
  static const engine::Parameters nonEmpty = {
      engine::handle<&FunctionCloseHandle::handle_>(L"handle", engine::Need::NonEmpty)};
  static const engine::Parameters present = {engine::handle<&FunctionCloseHandle::handle_>(L"handle")};
  return variant.need == engine::Need::NonEmpty ? nonEmpty : present;
}

// Closing a name that holds nothing is no error.
void FunctionCloseHandle::execute() {
  engine::log(variant_.start, handle_.c_str());
  handles().close(handle_);
}

}  // namespace api
