#pragma once
// Last-write-time comparisons behind the diffLWTOnly options.
#include <windows.h>

#include <optional>
#include <string>

namespace api::files {

// The file's last write time as FindFirstFileW reports it; nothing when absent.
std::optional<FILETIME> lastWriteTime(const std::wstring& path);

// True when both files exist and their last write times are equal.
bool sameLastWriteTime(const std::wstring& a, const std::wstring& b);

}  // namespace api::files
