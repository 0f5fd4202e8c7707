#pragma once
// One script run: preparation turns the document into function lists, the
// execution loop runs them, and reset frees what the run left behind.
#include <map>
#include <memory>
#include <string>

#include "engine/diagnostics.h"
#include "engine/function.h"
#include "engine/registry.h"
#include "engine/runtime.h"

class TiXmlDocument;
class TiXmlElement;

namespace engine {

using Presets = std::map<std::wstring, std::wstring>;

class Engine {
 public:
  explicit Engine(const FunctionRegistry& registry) : registry_(registry), diagnostics_(logDiagnostics_) {}
  // Preparation reports its problems to `diagnostics` instead of the log.
  Engine(const FunctionRegistry& registry, Diagnostics& diagnostics)
      : registry_(registry), diagnostics_(diagnostics) {}

  // Root and version checks, variables, trace file, function lists, labels.
  // False when it found an error.
  bool prepare(TiXmlDocument& document, const Presets& presets);
  // Runs the prepared script to its end.
  void run();
  // The prepared script's first function (nullptr for an empty script).
  FunctionBase* first() const { return head_.get(); }
  // One step of the loop: runs `function`, returns what runs next.
  FunctionBase* step(FunctionBase* function);
  // Resets variables, frees leaked handles and the function lists, closes the trace.
  void reset();
  // The run's variables, for tests that read what a script left.
  VariableStore& variables() { return runtime_.variables; }

 private:
  // Runs `function` and picks what runs next.
  FunctionBase* next(FunctionBase* function);
  bool buildList(FunctionBase* owner, TiXmlElement& parent, std::unique_ptr<FunctionBase>& head);
  std::unique_ptr<FunctionBase> buildFunction(FunctionBase* owner, TiXmlElement& element);
  bool buildHandlers(FunctionBase& function, TiXmlElement& element);
  bool buildHandler(FunctionBase& function, TiXmlElement* handler, std::unique_ptr<FunctionBase>& head);
  bool addLabel(const std::wstring& label, FunctionBase* function, const TiXmlElement& element);
  FunctionBase* label(const std::wstring& name) const;
  std::wstring suggestedTag(const std::wstring& tag) const;
  // Reports an error; false when preparation must stop.
  bool problem(const TiXmlBase* where, const std::wstring& message, const std::wstring& detail = {});

  struct Label {
    const TiXmlElement* definition = nullptr;  // nullptr while the label is only referred to
    FunctionBase* function = nullptr;          // what it names; nullptr in a check, which keeps no functions
    const TiXmlElement* reference = nullptr;   // the first element referring to it
  };

  const FunctionRegistry& registry_;
  LogDiagnostics logDiagnostics_;
  Diagnostics& diagnostics_;
  bool failed_ = false;
  bool stopped_ = false;
  int loopLine_ = 0;  // the line of the loop whose elements are being built
  Runtime runtime_;
  std::unique_ptr<FunctionBase> head_;
  std::map<std::wstring, Label> labels_;
};

// Checks the root's version attribute (1.1 expected) and reports a missing
// or other major version as an error, another minor one as a warning.
bool checkVersion(const TiXmlElement& root, Diagnostics& diagnostics);

}  // namespace engine
