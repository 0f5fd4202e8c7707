#pragma once
// Checking a script without running it: every problem preparation finds, each
// with its place in the file, and what preparation cannot see: handlers that
// do not fit their function, attributes no function reads, variables read but
// never assigned and handles used but never opened.
#include <string>
#include <vector>

#include "engine/diagnostics.h"
#include "engine/engine.h"
#include "engine/registry.h"

class TiXmlDocument;

namespace engine {

struct Finding {
  int line = 0;  // 1-based; 0 when the problem has no place in the file
  int column = 0;
  Severity severity = Severity::Error;
  std::wstring text;
};

// Checks a parsed script; `presets` count as assigned variables. The findings
// come in the order of their places in the file. The document is changed as
// preparation changes it (loops are rewritten).
std::vector<Finding> checkScript(TiXmlDocument& document, const FunctionRegistry& registry,
                                 const Presets& presets = {});

// Whether `name` is a variable every run has before the script sets any:
// the built-ins and the names the environment provides.
bool isProvidedVariable(const std::wstring& name);

}  // namespace engine
