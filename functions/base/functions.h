#pragma once
// The base family: flow, trace, variables, strings and the test function.
// Each class's code is in the file named after its tag.
#include <cstdint>
#include <memory>
#include <string>

#include "engine/function.h"
#include "engine/registry.h"
#include "engine/regex.h"

namespace api::base {

using engine::FunctionBase;
using engine::FunctionRetBool;
using engine::FunctionRetError;
using engine::Need;
using engine::Parameters;

class FunctionExit : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  int32_t code_ = 0;
};

class FunctionTrace : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring value_;
};

class FunctionTraceSetFile : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring path_;
};

class FunctionSleep : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  int32_t milliseconds_ = 0;
};

class FunctionNothing : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters() { return engine::noParameters(); }
  static const engine::TagDoc doc;
};

// The jump itself is made by the execution loop.
class FunctionGoTo : public FunctionBase {
 public:
  void execute() override {}
  static const Parameters& parameters();
  static const engine::TagDoc doc;
  const std::wstring* jumpTarget() const override { return &target_; }

 private:
  std::wstring target_;
};

class FunctionOnErrorGoTo : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;
  const std::wstring* labelReference() const override { return &target_; }

 private:
  std::wstring target_;
};

class FunctionAssign : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring var_, value_;
};

class FunctionAssignToken : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;
  bool readAttributes() override;

 private:
  std::wstring var_, value_, pattern_, index_;
  std::unique_ptr<engine::Regex> regex_;
};

class FunctionAddInt : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring var_, value_;
};

class FunctionAddString : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring var_, value_;
};

// The span stringGet and stringDelete take: fixed numbers, read once;
// negative texts wrap to large unsigned values.
class StringSpanFunction : public FunctionBase {
 protected:
  static const Parameters& spanParameters();
  uint32_t fromIndex_ = 0;
  uint32_t maxCount_ = 0;
  std::wstring toAnyChar_;
};

class FunctionStringDelete : public StringSpanFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring var_;
};

class FunctionStringGet : public StringSpanFunction {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring var_, value_;
};

class FunctionStringTrim : public FunctionBase {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring var_, chars_;
};

class FunctionTest : public FunctionRetBool {
 public:
  enum Operator { LessOrEqual = 0, Equal = 1, Less = 2 };
  enum Type { String = 0, Number = 1 };
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring left_, right_;
  Operator operator_ = Equal;
  Type type_ = String;
};

}  // namespace api::base
