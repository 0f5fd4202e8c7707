#include "engine/integer.h"

#include <limits>

namespace engine {

int32_t toInt(std::wstring_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == L' ' || (text[i] >= L'\t' && text[i] <= L'\r'))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) negative = text[i++] == L'-';
  constexpr int64_t limit = int64_t{std::numeric_limits<int32_t>::max()} + 1;
  int64_t value = 0;
  for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
    value = value * 10 + (text[i] - L'0');
    if (value > limit) value = limit;  // keep accumulating cheaply, clamp below
  }
  if (negative) return static_cast<int32_t>(-value);
  return value >= limit ? std::numeric_limits<int32_t>::max() : static_cast<int32_t>(value);
}

}  // namespace engine
