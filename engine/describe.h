#pragma once
// Documents made from the description of every tag, so that nothing about a
// tag is written twice: an XML Schema for editors and validators, and the
// function reference.
#include <string>

#include "engine/registry.h"

namespace engine {

// XML Schema 1.0 of scripts whose root is `script` (UTF-8, LF line ends).
std::string schemaText(const FunctionRegistry& registry);

// The function reference in Markdown (UTF-8, LF line ends).
std::string referenceText(const FunctionRegistry& registry);

}  // namespace engine
