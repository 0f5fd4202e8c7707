#pragma once
#include <string>
#include <vector>

namespace api::files {

// Each entry followed by the delimiter, then every trailing character that
// occurs anywhere in the delimiter cut off (from the last entry too).
std::wstring joinDelimited(const std::vector<std::wstring>& entries, const std::wstring& delimiter);

}  // namespace api::files
