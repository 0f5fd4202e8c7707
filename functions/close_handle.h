#pragma once
// fileClose, xmlClose and jsonClose: one function that frees what a handle
// name holds, whatever its kind, and the name.
#include <string>

#include "engine/function.h"
#include "engine/log_line.h"
#include "engine/registry.h"

namespace api {

class FunctionCloseHandle : public engine::FunctionBase {
 public:
  // What sets one close tag apart.
  struct Variant {
    engine::CheckedFormat<const wchar_t*> start;  // the line it logs, with the handle name
    engine::Need need;                            // whether `handle` may be empty
    const engine::TagDoc& doc;
  };

  explicit FunctionCloseHandle(const Variant& variant) : variant_(variant) {}
  void execute() override;
  static const engine::Parameters& parameters(const Variant& variant);

 private:
  const Variant& variant_;
  std::wstring handle_;
};

}  // namespace api
