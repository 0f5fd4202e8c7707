#pragma once
// Reading and writing whole script files, and turning their bytes into a DOM.
#include <cstdint>
#include <string>
#include <vector>

class TiXmlDocument;

namespace engine {

// Whole-file read: 0 or a Windows error code (1006 for an empty file, 30 when
// the failed open set no error).
uint32_t readWholeFile(const std::wstring& path, std::vector<unsigned char>& bytes);
uint32_t writeWholeFile(const std::wstring& path, const std::vector<unsigned char>& bytes);

// Script text to UTF-8: UTF-16 (with its byte-order mark) and UTF-8 (with or
// without one) are recognised; anything else is read in the ANSI code page.
std::string scriptTextToUtf8(const char* bytes, size_t length);

// Parses script text; false when it is empty or not well-formed XML.
bool parseScript(const char* bytes, size_t length, TiXmlDocument& document);

}  // namespace engine
