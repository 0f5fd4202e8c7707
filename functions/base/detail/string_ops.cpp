#include "functions/base/detail/string_ops.h"

#include <algorithm>

namespace api::base {
namespace {

size_t spanLength(const std::wstring& text, uint32_t from, uint32_t maxCount, std::wstring_view stopChars) {
  const size_t length = std::min<size_t>(maxCount, text.size() - from);
  const size_t stop = std::wstring_view(text).substr(from, length).find_first_of(stopChars);
  return stop == std::wstring_view::npos ? length : stop;
}

}  // namespace

std::wstring spanOf(const std::wstring& text, uint32_t from, uint32_t maxCount, std::wstring_view stopChars) {
  if (from >= text.size()) return {};
  return text.substr(from, spanLength(text, from, maxCount, stopChars));
}

bool deleteSpan(std::wstring& text, uint32_t from, uint32_t maxCount, std::wstring_view stopChars) {
  if (from >= text.size()) return false;
  text.erase(from, spanLength(text, from, maxCount, stopChars));
  return true;
}

std::wstring trimChars(const std::wstring& text, std::wstring_view chars) {
  const size_t last = text.find_last_not_of(chars);
  if (last == std::wstring::npos) return {};
  const size_t first = text.find_first_not_of(chars);
  return text.substr(first, last - first + 1);
}

}  // namespace api::base
