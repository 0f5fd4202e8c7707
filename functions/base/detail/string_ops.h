#pragma once
// Index rules of the string functions (and so of `for` loops). Indices count
// UTF-16 code units.
#include <cstdint>
#include <string>
#include <string_view>

namespace api::base {

// At most maxCount units from `from`, cut before the first stop character;
// empty when `from` is at or past the end.
std::wstring spanOf(const std::wstring& text, uint32_t from, uint32_t maxCount, std::wstring_view stopChars);
// Deletes what spanOf would return (the stop character stays); false, text
// unchanged, when `from` is at or past the end.
bool deleteSpan(std::wstring& text, uint32_t from, uint32_t maxCount, std::wstring_view stopChars);
// Strips the characters of `chars` from the end, then from the start.
std::wstring trimChars(const std::wstring& text, std::wstring_view chars);

}  // namespace api::base
