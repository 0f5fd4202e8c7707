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

// Every process function ends on one Windows code: 0 is success, 258 (a wait
// that ran out) reads "timeout", any other code is the error text.
class ProcessFunction : public FunctionRetError {
 protected:
  static constexpr uint32_t kWaitTimeout = platform::kErrorWaitTimeout;

  // Records the outcome and logs the end line (under `tag`, else the function's own).
  void end(uint32_t code, const wchar_t* tag = nullptr) {
    if (code == kWaitTimeout) {
      fail(L"timeout");
    } else if (code != 0) {
      fail(code);
    }
    logEnd(tag);
  }
};

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
