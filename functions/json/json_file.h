#pragma once
// Reading, parsing and writing JSON files.
#include <string>

#include <picojson.h>

namespace api::json::helpers {

// The whole file read in text mode (CR LF becomes LF); false when it cannot be opened.
bool readTextFile(const std::wstring& path, std::string& out);

// Creates or truncates the file and writes the text in text mode; false when
// it cannot be opened.
bool writeTextFile(const std::wstring& path, const std::string& text);

// Parses the text into `out` the way picojson's stream operator does: the
// library's last-error store is cleared, then holds the syntax error if any.
// Nesting is bounded (see the .cpp) so no input can exhaust the stack.
void parseDocument(const std::string& text, picojson::value& out);

}  // namespace api::json::helpers
