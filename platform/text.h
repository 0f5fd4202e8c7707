#pragma once
// UTF-8 / UTF-16 conversion at the boundary between the engine (wide strings)
// and the libraries and files that speak UTF-8.
#include <optional>
#include <string>
#include <string_view>

namespace platform {

std::string toUtf8(std::wstring_view text);
// Appends instead of returning, so hot paths can reuse one buffer.
void appendUtf8(std::wstring_view text, std::string& out);
// Nothing when the text holds a lone surrogate, which has no UTF-8 form.
std::optional<std::string> toUtf8Strict(std::wstring_view text);
std::wstring fromUtf8(std::string_view text);
// Appends instead of returning, so hot paths can reuse one buffer.
void appendWide(std::string_view utf8, std::wstring& out);
// Text in the process's ANSI code page, for files that are not UTF-8.
std::wstring fromAnsi(std::string_view text);
// Text in the ANSI code page; characters it lacks become '?'.
std::string toAnsi(std::wstring_view text);
bool isValidUtf8(std::string_view text);

}  // namespace platform
