#include "functions/json/detail/json_values.h"

#include <cmath>
#include <stdexcept>

#include "platform/text.h"

namespace api::json::helpers {

const wchar_t* typeName(const picojson::value& value) {
  if (value.is<picojson::object>()) return L"object";
  if (value.is<picojson::array>()) return L"array";
  if (value.is<std::string>()) return L"string";
  if (value.is<bool>()) return L"boolean";
  if (value.is<double>()) return L"number";
  if (value.is<picojson::null>()) return L"null";
  return L"unknown";
}

bool isScalar(const picojson::value& value) {
  return value.is<bool>() || value.is<double>() || value.is<std::string>();
}

std::wstring scalarText(const picojson::value& value) {
  // to_str() formats numbers exactly as the serializer writes them.
  return value.is<std::string>() ? wideFromJson(value.get<std::string>()) : platform::fromUtf8(value.to_str());
}

std::wstring wideFromJson(const std::string& text) { return platform::fromUtf8(text.c_str()); }

std::optional<int> parseIndex(const std::wstring& text) {
  try {
    return std::stoi(text);
  } catch (const std::logic_error&) {  // invalid_argument, out_of_range
    return std::nullopt;
  }
}

void ScalarSource::choose(const std::wstring* stringValue, const std::wstring* numberValue,
                          const std::wstring* boolValue) {
  if (stringValue) {
    kind_ = Kind::String;
    text_ = *stringValue;
  } else if (numberValue && !numberValue->empty()) {
    kind_ = Kind::Number;
    text_ = *numberValue;
  } else if (boolValue && !boolValue->empty()) {
    kind_ = Kind::Boolean;
    text_ = *boolValue;
  }
}

ScalarSource::Error ScalarSource::convert(const std::wstring& expanded, picojson::value& out) const {
  switch (kind_) {
    case Kind::String: out = picojson::value(platform::toUtf8(expanded)); return Error::None;
    case Kind::Number: {
      double number = 0;
      try {
        number = std::stod(expanded);
      } catch (const std::logic_error&) {
        return Error::Number;
      }
      // JSON has no infinity or NaN (and picojson throws on them).
      if (!std::isfinite(number)) return Error::Number;
      out = picojson::value(number);
      return Error::None;
    }
    case Kind::Boolean:
      if (expanded == L"true" || expanded == L"1")
        out = picojson::value(true);
      else if (expanded == L"false" || expanded == L"0")
        out = picojson::value(false);
      else
        return Error::Boolean;
      return Error::None;
    case Kind::None: break;
  }
  return Error::Type;
}

}  // namespace api::json::helpers
