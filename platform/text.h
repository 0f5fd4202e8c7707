#pragma once
// UTF-8 / UTF-16 conversion at the boundary between the engine (wide strings)
// and the libraries and files that speak UTF-8.
#include <string>
#include <string_view>

namespace platform {

std::string toUtf8(std::wstring_view text);
// Appends instead of returning, so hot paths can reuse one buffer.
void appendUtf8(std::wstring_view text, std::string& out);
std::wstring fromUtf8(std::string_view text);
// Text in the process's ANSI code page, for files that are not UTF-8.
std::wstring fromAnsi(std::string_view text);
bool isValidUtf8(std::string_view text);

}  // namespace platform
