#include "engine/integer.h"
#include "functions/base/functions.h"

namespace api::base {

// fromIndex and maxCount are fixed numbers, read once; negative texts wrap to
// large unsigned values.
bool readStringSpan(const engine::Attributes& attributes, StringSpan& span) {
  const auto nonEmpty = [&](const wchar_t* name) -> const std::wstring* {
    auto it = attributes.find(name);
    return it == attributes.end() || it->second.empty() ? nullptr : &it->second;
  };
  const std::wstring* from = nonEmpty(L"fromIndex");
  const std::wstring* count = nonEmpty(L"maxCount");
  const std::wstring* stops = nonEmpty(L"toAnyChar");
  if (!from || !count || !stops) return false;
  span.fromIndex = static_cast<uint32_t>(engine::toInt(*from));
  span.maxCount = static_cast<uint32_t>(engine::toInt(*count));
  span.toAnyChar = *stops;
  return true;
}

}  // namespace api::base
