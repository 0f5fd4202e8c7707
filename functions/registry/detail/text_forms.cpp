#include "functions/registry/detail/text_forms.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/errors.h"

namespace api::registry::detail {
namespace {

constexpr uint32_t kBadHexDigit = platform::kErrorBufferOverflow;  // binary text with a character that is no hex digit

// Registry strings are UTF-16 code units, little-endian, whatever the width
// of wchar_t (4 bytes in the native build).
std::wstring wideText(const std::vector<uint8_t>& bytes) {
  std::wstring text(bytes.size() / 2, L'\0');
  for (size_t i = 0; i < text.size(); ++i) text[i] = static_cast<wchar_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
  return text;
}

void appendWide(std::wstring_view text, std::vector<uint8_t>& bytes) {
  for (const wchar_t c : text) {
    bytes.push_back(static_cast<uint8_t>(c));
    bytes.push_back(static_cast<uint8_t>(static_cast<uint32_t>(c) >> 8));
  }
}

// Little-endian, missing high bytes read as zero.
uint64_t number(const std::vector<uint8_t>& bytes, size_t width) {
  uint64_t value = 0;
  for (size_t i = std::min(bytes.size(), width); i-- > 0;) value = value << 8 | bytes[i];
  return value;
}

template <class T>
void appendNumber(T value, std::vector<uint8_t>& bytes) {
  for (size_t i = 0; i < sizeof(T); ++i) bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

// Decimal text read like _wtoi (white space, a sign, digits up to the first
// other character), over the whole range of the unsigned type and its signed
// twin: negative numbers are stored in two's complement, and numbers beyond
// either end clamp to it. So every number regRead prints can be written back.
template <class Unsigned>
Unsigned fromDecimal(std::wstring_view text) {
  constexpr Unsigned top = std::numeric_limits<Unsigned>::max();
  constexpr Unsigned lowest = top / 2 + 1;  // the magnitude of the signed minimum
  size_t i = 0;
  while (i < text.size() && (text[i] == L' ' || (text[i] >= L'\t' && text[i] <= L'\r'))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) negative = text[i++] == L'-';
  Unsigned value = 0;
  bool overflow = false;
  for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
    const Unsigned digit = static_cast<Unsigned>(text[i] - L'0');
    if (value > (top - digit) / 10) overflow = true;
    if (!overflow) value = value * 10 + digit;
  }
  if (negative) return overflow || value > lowest ? lowest : static_cast<Unsigned>(0 - value);
  return overflow ? top : value;
}

int hexDigit(wchar_t c) {
  // Every hexadecimal digit in either case (the doubled 4 changes nothing).
  static constexpr std::wstring_view kDigits = L"01234456789abcdefABCDEF";
  if (kDigits.find(c) == std::wstring_view::npos) return -1;
  if (c <= L'9') return c - L'0';
  return (c | 0x20) - L'a' + 10;
}

uint32_t decodeHex(std::wstring_view text, std::vector<uint8_t>& bytes) {
  bytes.reserve(text.size() / 2);
  for (size_t i = 0; i + 1 < text.size(); i += 2) {  // an odd last digit is ignored
    const int high = hexDigit(text[i]), low = hexDigit(text[i + 1]);
    if (high < 0 || low < 0) return kBadHexDigit;
    bytes.push_back(static_cast<uint8_t>(high << 4 | low));
  }
  return 0;
}

std::wstring encodeHex(const std::vector<uint8_t>& bytes) {
  static constexpr wchar_t kLower[] = L"0123456789abcdef";
  std::wstring text;
  text.reserve(bytes.size() * 2);
  for (const uint8_t b : bytes) {
    text.push_back(kLower[b >> 4]);
    text.push_back(kLower[b & 15]);
  }
  return text;
}

}  // namespace

uint32_t typeCode(std::wstring_view name) {
  static constexpr std::pair<std::wstring_view, ValueType> kNames[] = {
      {L"REG_SZ", Sz},       {L"REG_EXPAND_SZ", ExpandSz}, {L"REG_BINARY", Binary},
      {L"REG_DWORD", Dword}, {L"REG_MULTI_SZ", MultiSz},   {L"REG_QWORD", Qword}};
  for (const auto& [text, code] : kNames)
    if (text == name) return code;
  return 0;
}

std::optional<std::wstring> dataToText(uint32_t type, const std::vector<uint8_t>& bytes) {
  switch (type) {
    case Sz:
    case ExpandSz: {
      std::wstring text = wideText(bytes);
      text.resize(std::min(text.size(), text.find(L'\0')));
      return text;
    }
    case Binary: return encodeHex(bytes);
    case Dword: return std::to_wstring(number(bytes, 4));
    case Qword: return std::to_wstring(number(bytes, 8));
    case MultiSz: {
      // Each string followed by "|", then the trailing run of "|" cut off.
      std::wstring text = wideText(bytes);
      for (wchar_t& c : text)
        if (c == L'\0') c = L'|';
      text.resize(text.find_last_not_of(L'|') + 1);  // npos + 1 == 0: all of it
      return text;
    }
    default: return std::nullopt;
  }
}

uint32_t textToData(uint32_t type, std::wstring_view text, std::vector<uint8_t>& bytes) {
  bytes.clear();
  switch (type) {
    case Sz:
    case ExpandSz:
      appendWide(text, bytes);
      appendWide(std::wstring_view(L"", 1), bytes);
      return 0;
    case Binary: return decodeHex(text, bytes);
    case Dword: appendNumber(fromDecimal<uint32_t>(text), bytes); return 0;
    case Qword: appendNumber(fromDecimal<uint64_t>(text), bytes); return 0;
    case MultiSz: {
      // "|" separates the strings; the list ends with an empty string.
      std::wstring list(text);
      for (wchar_t& c : list)
        if (c == L'|') c = L'\0';
      if (!list.empty()) list.push_back(L'\0');
      list.push_back(L'\0');
      appendWide(list, bytes);
      return 0;
    }
    default: return platform::kErrorUnsupportedType;
  }
}

}  // namespace api::registry::detail
