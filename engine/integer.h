#pragma once
#include <cstdint>
#include <string_view>

namespace engine {

// Decimal text to integer the way scripts expect: optional leading white space,
// an optional sign, then digits up to the first other character; 0 without
// digits ("12abc" is 12, "abc" is 0). Out-of-range values clamp like wcstol.
int32_t toInt(std::wstring_view text);

}  // namespace engine
