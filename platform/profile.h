#pragma once
// INI files through the system's profile-string calls, which also decide the
// file's encoding (a UTF-16 byte-order mark keeps every character; otherwise
// the ANSI code page).
#include <cstdint>
#include <string>

namespace platform {

// The value of `key` in `section`, or `fallback` when the key, the section or
// the file is missing. Read through a fixed 10,240-character buffer, so a
// longer value is cut to 10,239 characters.
std::wstring profileString(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                           const std::wstring& fallback);

// Writes the value, creating the file and the section when missing. The write
// goes to a copy beside the file, which then replaces it in one step; where
// the system refuses that, to the file itself. 0, or the error code of a
// failed write (a failure that sets no error counts as done).
uint32_t writeProfileString(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                            const std::wstring& value);

}  // namespace platform
