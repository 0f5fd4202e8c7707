// Character-level helpers over UTF-8 text. XPath counts characters, so a
// character outside the BMP (four bytes here) is one.
#pragma once

#include <cstddef>
#include <string_view>

namespace xpath::detail {

inline bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

inline std::size_t countCharacters(std::string_view s) {
  std::size_t n = 0;
  for (char c : s) n += !isContinuationByte(c);
  return n;
}

// Length in bytes of the character starting at s[i].
inline std::size_t characterLength(std::string_view s, std::size_t i) {
  std::size_t j = i + 1;
  while (j < s.size() && isContinuationByte(s[j])) ++j;
  return j - i;
}

}  // namespace xpath::detail
