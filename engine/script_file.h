#pragma once
// Turning a script file's bytes into a DOM.
#include <string>

class TiXmlDocument;

namespace engine {

// Script text to UTF-8: UTF-16 (with its byte-order mark) and UTF-8 (with or
// without one) are recognised; anything else is read in the ANSI code page.
std::string scriptTextToUtf8(const char* bytes, size_t length);

// Parses script text; false when it is empty or not well-formed XML.
bool parseScript(const char* bytes, size_t length, TiXmlDocument& document);

}  // namespace engine
