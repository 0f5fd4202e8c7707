#pragma once
// Case-insensitive comparison that folds only A-Z, as command-line keys, the
// `random` variable and string tests do: other letters compare as they are.
#include <algorithm>
#include <string_view>

namespace engine {

constexpr wchar_t asciiLower(wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c; }

// <0, 0 or >0, code unit by code unit.
inline int compareIgnoreAsciiCase(std::wstring_view a, std::wstring_view b) {
  const size_t n = std::min(a.size(), b.size());
  for (size_t i = 0; i < n; ++i) {
    const int d = static_cast<int>(asciiLower(a[i])) - static_cast<int>(asciiLower(b[i]));
    if (d != 0) return d;
  }
  return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

inline bool equalsIgnoreAsciiCase(std::wstring_view a, std::wstring_view b) {
  return compareIgnoreAsciiCase(a, b) == 0;
}

// Whether a script's UTF-8 name is `name`, which is ASCII as every name the
// program defines (tags, attributes, loops) is: no conversion needed, and a
// byte of a multi-byte character never equals an ASCII one. `name` is compared
// up to its terminator, so its length is never counted first.
constexpr bool isAsciiName(std::string_view utf8, const wchar_t* name) {
  size_t i = 0;
  for (; i < utf8.size(); ++i)
    if (name[i] == 0 || static_cast<unsigned char>(utf8[i]) != static_cast<unsigned>(name[i])) return false;
  return name[i] == 0;
}

}  // namespace engine
