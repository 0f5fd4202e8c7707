#pragma once
// Turning a script file's bytes into a DOM.
#include <string>
#include <string_view>
#include <vector>

class TiXmlDocument;

namespace engine {

// Deciphers the bytes of an encrypted script in place with the program's key
// (a truncated last block reads as zeros) and returns the length of the text
// they hold: up to the zero padding, or for UTF-16 text up to its trailing zeros.
size_t decryptScript(std::vector<unsigned char>& bytes);

// A name or text of the parsed script (UTF-8) as wide text; empty for null.
// Most are ASCII, which is widened directly instead of through the system.
std::wstring scriptString(const char* utf8);

// Parses a script's text; false when it is empty or not well-formed XML.
// UTF-16 (with its byte-order mark) and UTF-8 (with or without one) are
// recognised; anything else is read in the ANSI code page. UTF-8 text, the
// usual case, is parsed where it stands, so a zero must follow `text`.
bool parseScript(std::string_view text, TiXmlDocument& document);
// The same for the first `length` of `bytes`, which are cut to `length` and
// ended with a zero.
bool parseScript(std::vector<unsigned char>& bytes, size_t length, TiXmlDocument& document);

}  // namespace engine
