#pragma once
// The processes family: starting, waiting for and ending processes, the
// working directory, impersonation, and calling a library's export. Each
// class's code is in the file named after its tag.
#include <cstdint>
#include <string>

#include "engine/function.h"
#include "engine/registry.h"
#include "platform/errors.h"

namespace api::processes {

using engine::FunctionRetError;
using engine::Need;
using engine::Parameters;

// Every process function ends on one Windows code (endWith).
using ProcessFunction = FunctionRetError;

// processRun.
class FunctionProcessStart : public ProcessFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring path_, directory_, arguments_;
  int32_t waitMilliseconds_ = 0;
};

class FunctionProcessWait : public ProcessFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring name_;
  int32_t waitMilliseconds_ = 0;
};

class FunctionProcessKill : public ProcessFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring name_;
};

class FunctionProcessChangeWorkingDir : public ProcessFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring to_;
};

class FunctionProcessImpersonateUser : public ProcessFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring domain_, user_, password_;
  bool encrypted_ = false;
};

class FunctionProcessRevertToSelf : public ProcessFunction {
 public:
  void execute() override;
  static const Parameters& parameters() { return engine::noParameters(); }
  static const engine::TagDoc doc;
};

class FunctionProcessEntrypoint : public ProcessFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring path_, entryPoint_, text_;
  int32_t integer_ = 0;
};

}  // namespace api::processes
