#pragma once
// The xml family: documents under handle names, addressed by XPath.
// Each class's code is in the file named after its tag. Every function but
// xmlClose starts each run with a clean result, so loops can run them again.
#include <string>

#include "engine/function.h"
#include "engine/registry.h"
#include "functions/close_handle.h"

namespace api::xml {


using engine::FunctionBase;
using engine::FunctionRetError;
using engine::Need;
using engine::Parameters;

class FunctionXmlOpen : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring path_, handle_;
};

// xmlClose: the one close function, with its line and description.
extern const FunctionCloseHandle::Variant kXmlClose;

class FunctionXmlSave : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring path_, handle_;
};

class FunctionXmlAddChild : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring xpath_, handle_, data_, insertBefore_, insertAfter_, cdata_;
};

// Ends with xmlAddChild's end line.
class FunctionXmlRemoveChild : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring handle_, xpath_;
};

class FunctionXmlSetValue : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring handle_, xpath_, value_;
};

class FunctionXmlGetValue : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring xpath_, handle_, var_;
};

// Ends with xmlGetValue's end line.
class FunctionXmlGetElement : public FunctionRetError {
 public:
  void execute() override;
  static const Parameters& parameters();
  static const engine::TagDoc doc;

 private:
  std::wstring handle_, xpath_, destHandle_;
};

}  // namespace api::xml
