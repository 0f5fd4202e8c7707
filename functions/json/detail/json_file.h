#pragma once
// Parsing JSON documents.
#include <string>

#include <picojson.h>

namespace api::json::helpers {

// Parses the text into `out` the way picojson's stream operator does: the
// library's last-error store is cleared, then holds the syntax error if any.
// The text is one value, after an optional UTF-8 byte-order mark; anything
// but white space after the value is a syntax error there.
// Nesting is bounded (see the .cpp) so no input can exhaust the stack.
void parseDocument(const std::string& text, picojson::value& out);

}  // namespace api::json::helpers
