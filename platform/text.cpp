#include "platform/text.h"

#include <windows.h>

#include <type_traits>

namespace platform {
namespace {

// Appends the text converted from the code page.
void appendWide(UINT codePage, DWORD flags, std::string_view text, std::wstring& out) {
  if (text.empty()) return;
  const int size = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(codePage, flags, text.data(), size, nullptr, 0);
  if (needed <= 0) return;
  const size_t start = out.size();
  out.resize(start + static_cast<size_t>(needed));
  MultiByteToWideChar(codePage, flags, text.data(), size, out.data() + start, needed);
}

// Appends the text converted to the code page; false when the conversion refuses it.
bool appendNarrow(UINT codePage, DWORD flags, std::wstring_view text, std::string& out) {
  if (text.empty()) return true;
  const int size = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(codePage, flags, text.data(), size, nullptr, 0, nullptr, nullptr);
  if (needed <= 0) return false;
  const size_t start = out.size();
  out.resize(start + static_cast<size_t>(needed));
  WideCharToMultiByte(codePage, flags, text.data(), size, out.data() + start, needed, nullptr, nullptr);
  return true;
}

// Most text is ASCII, which converts one to one: the text is copied up to its
// first other character, and only the rest goes through the system, whose
// every call costs much more than the copy. Returns how much was copied.
template <typename To, typename From>
size_t appendAscii(std::basic_string_view<From> text, std::basic_string<To>& out) {
  const size_t start = out.size();
  out.resize(start + text.size());
  size_t i = 0;
  for (; i < text.size(); ++i) {
    const auto c = static_cast<std::make_unsigned_t<From>>(text[i]);
    if (c >= 0x80) break;
    out[start + i] = static_cast<To>(c);
  }
  out.resize(start + i);
  return i;
}

}  // namespace

void appendUtf8(std::wstring_view text, std::string& out) {
  appendNarrow(CP_UTF8, 0, text.substr(appendAscii(text, out)), out);
}

std::string toUtf8(std::wstring_view text) {
  std::string out;
  appendUtf8(text, out);
  return out;
}

std::optional<std::string> toUtf8Strict(std::wstring_view text) {
  std::string out;
  if (!appendNarrow(CP_UTF8, WC_ERR_INVALID_CHARS, text, out)) return std::nullopt;
  return out;
}

void appendWide(std::string_view utf8, std::wstring& out) {
  appendWide(CP_UTF8, 0, utf8.substr(appendAscii(utf8, out)), out);
}

std::wstring fromUtf8(std::string_view text) {
  std::wstring out;
  appendWide(text, out);
  return out;
}

std::wstring fromAnsi(std::string_view text) {
  std::wstring out;
  appendWide(CP_ACP, 0, text, out);
  return out;
}

std::string toAnsi(std::wstring_view text) {
  std::string out;
  appendNarrow(CP_ACP, 0, text, out);
  return out;
}

bool isValidUtf8(std::string_view text) {
  if (text.empty()) return true;
  return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), static_cast<int>(text.size()), nullptr, 0) > 0;
}

}  // namespace platform
