#pragma once
// The function model: one object per script element. The engine creates it
// through the registry, lets it read its attributes once, and runs it any
// number of times; its result picks the handler that runs next.
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "engine/parameters.h"
#include "engine/runtime.h"

class TiXmlElement;

namespace engine {

enum class FunctionKind : uint8_t { Plain = 0, Error = 1, Bool = 2 };

using Attributes = std::map<std::wstring, std::wstring>;

class FunctionBase {
 public:
  // Deletes the whole list that follows (iteratively: lists can be long).
  virtual ~FunctionBase();
  // Functions come from a pool of their own: a script makes its functions by
  // the thousand at once, and a call to the general allocator for each, slow
  // where the system heap is, would cost as much as the rest of preparing them.
  // Scripts are prepared and run on one thread.
  static void* operator new(std::size_t size);
  static void operator delete(void* function, std::size_t size);
  virtual void execute() = 0;
  // Reads the attributes through the tag's description; a class whose reading
  // is unusual overrides it and calls readParameters() first.
  virtual bool readAttributes() { return readParameters(); }

  // The label a `goto` jumps to; nullptr for every other function.
  virtual const std::wstring* jumpTarget() const { return nullptr; }
  // A label this function refers to, which must exist in the script.
  virtual const std::wstring* labelReference() const { return jumpTarget(); }

  // `element` is the script's element, which outlives the function: its
  // attributes are read from there, never copied.
  // `tag` is the registry's name, which outlives the function.
  void attach(Runtime& runtime, const wchar_t* tag, FunctionKind kind, const Parameters& parameters,
              const TiXmlElement& element) {
    runtime_ = &runtime;
    name_ = tag;
    kind_ = kind;
    parameters_ = &parameters;
    element_ = &element;
  }
  const wchar_t* name() const { return name_; }
  FunctionKind kind() const { return kind_; }
  // Every attribute by name, with a <data> child's text as `data` unless an
  // attribute has that name.
  Attributes attributes() const;
  std::optional<std::wstring> attribute(const wchar_t* name) const;
  // The element's line in the script (0 when not known).
  int line() const { return line_; }
  void setLine(int line) { line_ = line; }
  // What this run of the function expanded `written` to, while the run is
  // recorded; `written` itself when it expanded no such text.
  const std::wstring& expandedAs(const std::wstring& written) const;

  std::unique_ptr<FunctionBase> next;
  FunctionBase* parent = nullptr;

 protected:
  // Stores every described attribute; false when one is missing, empty where
  // it must not be, or refused by its form.
  bool readParameters();
  // Refuses the element at preparation and says why; returns false.
  bool refuse(std::wstring why) const;

  std::wstring expand(const std::wstring& text) const;
  // Whether the run is recorded, so a function that may find nothing to do
  // (a value already there) should find out and say so with nothingChanged().
  bool recording() const { return runtime_->recording; }
  void nothingChanged() const { runtime_->foundNothingToChange = true; }
  VariableStore& variables() const { return runtime_->variables; }
  HandleTable& handles() const { return runtime_->handles; }
  Runtime& runtime() const { return *runtime_; }

 private:
  // Kept small: a script's functions are made by the thousand.
  Runtime* runtime_ = nullptr;
  const wchar_t* name_ = L"";
  const Parameters* parameters_ = nullptr;
  const TiXmlElement* element_ = nullptr;
  int line_ = 0;
  FunctionKind kind_ = FunctionKind::Plain;
};

// Success or error with an error text; drives onsuccess/onerror/onerrorspec.
class FunctionRetError : public FunctionBase {
 public:
  virtual bool hasError() const { return failed_; }
  virtual std::wstring getErrorText() const { return errorText_; }

  std::map<std::wstring, std::unique_ptr<FunctionBase>> errorHandlers;
  std::unique_ptr<FunctionBase> errorHandler;
  std::unique_ptr<FunctionBase> successHandler;

 protected:
  void fail(uint32_t windowsError);
  void fail(std::wstring text);
  // Clears an earlier outcome, for functions that start each run afresh.
  void clearResult();
  // "<tag> function end with success|error. err:'<text>'"; `tag` defaults to
  // this function's own name.
  void logEnd(const wchar_t* tag = nullptr) const;
  // Records a Windows code as the outcome (0 success; 258, a wait that ran
  // out, reads "timeout"; any other is the error text), then logs the end line.
  void endWith(uint32_t code, const wchar_t* tag = nullptr);

 private:
  std::wstring errorText_;
  bool failed_ = false;
};

// True or false; drives onTrue/onFalse.
class FunctionRetBool : public FunctionBase {
 public:
  bool getResult() const { return result_; }

  std::unique_ptr<FunctionBase> trueHandler;
  std::unique_ptr<FunctionBase> falseHandler;

 protected:
  // Stores the result and logs "<tag> function end with True|False.".
  void finish(bool result);
  // Stores the result and logs "<subject> end with True|False".
  void finishAs(const std::wstring& subject, bool result);
  // Stores the result without an end line.
  void setResult(bool result) { result_ = result; }

 private:
  bool result_ = false;
};

}  // namespace engine
