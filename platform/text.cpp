#include "platform/text.h"

#include <windows.h>

namespace platform {
namespace {

std::wstring toWide(UINT codePage, DWORD flags, std::string_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(codePage, flags, text.data(), size, nullptr, 0);
  if (needed <= 0) return {};
  std::wstring out(static_cast<size_t>(needed), L'\0');
  MultiByteToWideChar(codePage, flags, text.data(), size, out.data(), needed);
  return out;
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

}  // namespace

void appendUtf8(std::wstring_view text, std::string& out) { appendNarrow(CP_UTF8, 0, text, out); }

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

std::wstring fromUtf8(std::string_view text) { return toWide(CP_UTF8, 0, text); }

std::wstring fromAnsi(std::string_view text) { return toWide(CP_ACP, 0, text); }

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
