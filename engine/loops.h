#pragma once
// `for` and `xmlForEach` are not functions: before the functions are built, each
// is rewritten in place into plain elements with generated labels. Each loop is
// described once, here, for preparation, the checker and the schema.
#include <span>
#include <string>
#include <string_view>

#include "engine/parameters.h"

class TiXmlElement;

namespace engine {

struct Loop {
  const wchar_t* name;
  const wchar_t* summary;  // what the schema says of it
  Parameters parameters;   // its attributes, in the forms the functions' use
  const wchar_t* invalid;  // preparation's message when its attributes are not usable
  // Replaces the loop element by its expansion and returns the first inserted
  // element; called only when every attribute it needs is there.
  TiXmlElement* (*expand)(TiXmlElement& loop);
};

// Both loops, `for` first.
std::span<const Loop> loops();
// The loop of that element name; nullptr for any other.
const Loop* findLoop(std::string_view name);

// Whether the element has every attribute the loop needs, not empty where it
// must not be; otherwise `why` says which must be there.
bool usable(const Loop& loop, const TiXmlElement& element, std::wstring& why);

}  // namespace engine
