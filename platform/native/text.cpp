// UTF-8 conversion for the native build, where wchar_t holds whole code
// points. Invalid input becomes U+FFFD, as Windows' own conversion does.
#include "platform/text.h"

#include <cstdint>

namespace platform {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// The code point of the sequence at text[at], advancing `at` past it; false
// (and one byte consumed) for a sequence UTF-8 does not allow.
bool decode(std::string_view text, size_t& at, char32_t& out) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  if (lead < 0x80) {
    out = lead;
    return true;
  }
  const int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : -1;
  if (extra < 0 || lead > 0xF4 || at + static_cast<size_t>(extra) > text.size()) return false;
  char32_t value = lead & (0x3F >> extra);
  for (int i = 0; i < extra; ++i) {
    const auto byte = static_cast<unsigned char>(text[at + static_cast<size_t>(i)]);
    if (!isContinuation(byte)) return false;
    value = value << 6 | (byte & 0x3F);
  }
  static constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  if (value < kSmallest[extra] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return false;
  at += static_cast<size_t>(extra);
  out = value;
  return true;
}

bool encodable(char32_t c) { return c <= 0x10FFFF && !(c >= 0xD800 && c <= 0xDFFF); }

void encode(char32_t c, std::string& out) {
  if (!encodable(c)) c = kReplacement;
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | c >> 6));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | c >> 12));
    out.push_back(static_cast<char>(0x80 | (c >> 6 & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | c >> 18));
    out.push_back(static_cast<char>(0x80 | (c >> 12 & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c >> 6 & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

}  // namespace

void appendUtf8(std::wstring_view text, std::string& out) {
  for (wchar_t c : text) encode(static_cast<char32_t>(c), out);
}

std::string toUtf8(std::wstring_view text) {
  std::string out;
  appendUtf8(text, out);
  return out;
}

std::optional<std::string> toUtf8Strict(std::wstring_view text) {
  for (wchar_t c : text)
    if (!encodable(static_cast<char32_t>(c))) return std::nullopt;
  return toUtf8(text);
}

void appendWide(std::string_view text, std::wstring& out) {
  for (size_t at = 0; at < text.size();) {
    char32_t c = 0;
    out.push_back(static_cast<wchar_t>(decode(text, at, c) ? c : kReplacement));
  }
}

std::wstring fromUtf8(std::string_view text) {
  std::wstring out;
  appendWide(text, out);
  return out;
}

// Stands in for the ANSI code page: one character per byte.
std::wstring fromAnsi(std::string_view text) {
  std::wstring out;
  for (char c : text) out.push_back(static_cast<wchar_t>(static_cast<unsigned char>(c)));
  return out;
}

std::string toAnsi(std::wstring_view text) {
  std::string out;
  for (wchar_t c : text) out.push_back(static_cast<uint32_t>(c) < 256 ? static_cast<char>(c) : '?');
  return out;
}

bool isValidUtf8(std::string_view text) {
  char32_t c = 0;
  for (size_t at = 0; at < text.size();)
    if (!decode(text, at, c)) return false;
  return true;
}

}  // namespace platform
