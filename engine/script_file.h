#pragma once
// Turning a script file's bytes into a DOM.
#include <string>
#include <vector>

class TiXmlDocument;

namespace engine {

// Script text to UTF-8: UTF-16 (with its byte-order mark) and UTF-8 (with or
// without one) are recognised; anything else is read in the ANSI code page.
std::string scriptTextToUtf8(const char* bytes, size_t length);

// Deciphers the bytes of an encrypted script in place with the program's key
// (a truncated last block reads as zeros) and returns the length of the text
// they hold: up to the zero padding, or for UTF-16 text up to its trailing zeros.
size_t decryptScript(std::vector<unsigned char>& bytes);

// A name or text of the parsed script (UTF-8) as wide text; empty for null.
// Most are ASCII, which is widened directly instead of through the system.
std::wstring scriptString(const char* utf8);

// Parses script text; false when it is empty or not well-formed XML.
bool parseScript(const char* bytes, size_t length, TiXmlDocument& document);

}  // namespace engine
