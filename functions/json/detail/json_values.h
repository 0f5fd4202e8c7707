#pragma once
// Conversions between script texts and JSON values.
#include <optional>
#include <string>

#include <picojson.h>

namespace api::json::helpers {

// "object", "array", "string", "boolean", "number", "null".
const wchar_t* typeName(const picojson::value& value);

bool isScalar(const picojson::value& value);

// A scalar as a script text: true/false, a number as "%.f" when integral and
// below 2^53 in magnitude else "%.17g", a string's text.
std::wstring scalarText(const picojson::value& value);

// A JSON string as a wide string; like the whole-string Win32 conversion it
// ends at the first NUL.
std::wstring wideFromJson(const std::string& text);

// An index text in the manner of std::stoi: leading white space and a sign,
// digits up to the first other character; nothing without digits or beyond
// 32 bits.
std::optional<int> parseIndex(const std::wstring& text);

// The scalar an insert function puts into the tree, chosen from its attributes
// when the element is built.
class ScalarSource {
 public:
  enum class Kind { None, String, Number, Boolean };
  enum class Error { None, Number, Boolean, Type };

  // stringValue (even empty), else a non-empty numberValue, else a non-empty boolValue.
  void choose(const std::wstring* stringValue, const std::wstring* numberValue, const std::wstring* boolValue);
  const std::wstring& text() const { return text_; }

  // The value for the expanded text, or the reason it cannot be made.
  Error convert(const std::wstring& expanded, picojson::value& out) const;

 private:
  Kind kind_ = Kind::None;
  std::wstring text_;
};

}  // namespace api::json::helpers
