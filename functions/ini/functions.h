#pragma once
// The INI family: one value of an INI file read or written through the
// system's profile-string calls, which never keep the file open.
// Each class's code is in the file named after its tag.
#include <string>

#include "engine/function.h"
#include "engine/registry.h"

namespace api::ini {

using engine::FunctionRetError;
using engine::Need;
using engine::Parameters;

class FunctionIniGetValue : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring path_, section_, key_, var_, default_;
};

class FunctionIniSetValue : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring path_, section_, key_, value_;
};

}  // namespace api::ini
