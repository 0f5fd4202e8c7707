// Number <-> string conversions as string() and number() define them.
#include "xpath.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

namespace xpath {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

std::string numberToString(double value) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value > 0 ? "Infinity" : "-Infinity";
  if (value == 0) return "0";  // also -0

  // Shortest round-trip digits in scientific form ("d.ddde±x"), then placed
  // around the decimal point by hand since string() never uses an exponent.
  char buf[64];
  auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific);
  (void)ec;
  std::string_view sci(buf, end - buf);
  bool negative = sci.front() == '-';
  if (negative) sci.remove_prefix(1);
  std::size_t e = sci.find('e');
  int exponent = std::atoi(std::string(sci.substr(e + 1)).c_str());
  std::string digits;
  for (char c : sci.substr(0, e))
    if (c != '.') digits += c;
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();

  std::string out = negative ? "-" : "";
  int pointAt = exponent + 1;  // digits before the decimal point
  if (pointAt <= 0) {
    out += "0.";
    out.append(static_cast<std::size_t>(-pointAt), '0');
    out += digits;
  } else if (static_cast<std::size_t>(pointAt) >= digits.size()) {
    out += digits;
    out.append(pointAt - digits.size(), '0');
  } else {
    out += digits.substr(0, pointAt);
    out += '.';
    out += digits.substr(pointAt);
  }
  return out;
}

double stringToNumber(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  bool negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);

  // Only Digits ('.' Digits?)? | '.' Digits: no '+', no exponent, no hex, no "inf".
  std::size_t digits = 0, points = 0;
  for (char c : text) {
    if (c >= '0' && c <= '9')
      ++digits;
    else if (c == '.')
      ++points;
    else
      return NAN;
  }
  if (digits == 0 || points > 1) return NAN;

  double value = 0;
  auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  if (ec == std::errc::result_out_of_range) {
    value = std::strtod(std::string(text).c_str(), nullptr);  // overflow to inf, underflow to 0
  } else if (ec != std::errc() || ptr != text.data() + text.size()) {
    return NAN;
  }
  return negative ? -value : value;
}

}  // namespace xpath
