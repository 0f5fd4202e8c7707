#pragma once
// printf-style formatting with the C runtime's wide conventions: %s is a wide
// string and %p prints 16 upper-case hex digits. MinGW's C++ swprintf follows
// C99 instead (%s narrow), so these call msvcrt directly.
#include <cstdarg>
#include <string>

namespace platform {

void formatInto(std::wstring& out, const wchar_t* format, va_list args);
std::wstring format(const wchar_t* format, ...);

}  // namespace platform
