#pragma once
// One script run: preparation turns the document into function lists, the
// execution loop runs them, and reset frees what the run left behind.
#include <map>
#include <memory>
#include <string>

#include "engine/function.h"
#include "engine/registry.h"
#include "engine/runtime.h"

class TiXmlDocument;
class TiXmlElement;

namespace engine {

using Presets = std::map<std::wstring, std::wstring>;

class Engine {
 public:
  explicit Engine(const FunctionRegistry& registry) : registry_(registry) {}

  // Root and version checks, variables, trace file, function lists, labels.
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
  bool buildList(FunctionBase* owner, TiXmlElement& parent, std::unique_ptr<FunctionBase>& head);
  std::unique_ptr<FunctionBase> buildFunction(FunctionBase* owner, TiXmlElement& element);
  bool buildHandlers(FunctionBase& function, TiXmlElement& element);
  bool buildHandler(FunctionBase& function, TiXmlElement* handler, std::unique_ptr<FunctionBase>& head);
  bool addLabel(const std::wstring& label, FunctionBase* function);
  FunctionBase* label(const std::wstring& name) const;

  const FunctionRegistry& registry_;
  Runtime runtime_;
  std::unique_ptr<FunctionBase> head_;
  // Label -> function; nullptr while a label is only referred to.
  std::map<std::wstring, FunctionBase*> labels_;
};

// Checks the root's version attribute (1.1 expected); logs why it refuses.
bool checkVersion(const char* version);

}  // namespace engine
