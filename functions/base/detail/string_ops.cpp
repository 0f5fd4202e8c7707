#include "functions/base/detail/string_ops.h"

#include <algorithm>

namespace api::base {
namespace {

// Costs the span, not the text after it.
size_t spanLength(std::wstring_view text, uint32_t from, uint32_t maxCount, std::wstring_view stopChars) {
  const size_t length = std::min<size_t>(maxCount, text.size() - from);
  const size_t stop = text.substr(from, length).find_first_of(stopChars);
  return stop == std::wstring_view::npos ? length : stop;
}

}  // namespace

std::wstring spanOf(std::wstring_view text, uint32_t from, uint32_t maxCount, std::wstring_view stopChars) {
  if (from >= text.size()) return {};
  return std::wstring(text.substr(from, spanLength(text, from, maxCount, stopChars)));
}

bool deleteSpan(engine::VariableText& text, uint32_t from, uint32_t maxCount, std::wstring_view stopChars) {
  if (from >= text.size()) return false;
  text.erase(from, spanLength(text.view(), from, maxCount, stopChars));
  return true;
}

void trimChars(engine::VariableText& text, std::wstring_view chars) {
  const size_t last = text.view().find_last_not_of(chars);
  if (last == std::wstring_view::npos) {
    text.erase(0, text.size());
    return;
  }
  text.erase(last + 1, text.size() - last - 1);
  text.erase(0, text.view().find_first_not_of(chars));
}

}  // namespace api::base
