#include "engine/script_file.h"

#include <tinyxml.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

#include "engine/blowfish.h"
#include "platform/text.h"

namespace engine {
namespace {

std::string utf16ToUtf8(const char* bytes, size_t length, bool bigEndian) {
  std::wstring text(length / 2, L'\0');
  for (size_t i = 0; i < text.size(); ++i) {
    const auto hi = static_cast<unsigned char>(bytes[2 * i + (bigEndian ? 0 : 1)]);
    const auto lo = static_cast<unsigned char>(bytes[2 * i + (bigEndian ? 1 : 0)]);
    text[i] = static_cast<wchar_t>(hi << 8 | lo);
  }
  return platform::toUtf8(text);
}

// A whole script is scanned here: a word at a time, without an early exit.
bool isAscii(std::string_view text) {
  uint64_t high = 0;
  size_t i = 0;
  for (; i + 8 <= text.size(); i += 8) {
    uint64_t word;
    std::memcpy(&word, text.data() + i, 8);
    high |= word;
  }
  for (; i < text.size(); ++i) high |= static_cast<unsigned char>(text[i]);
  return (high & 0x8080808080808080u) == 0;
}

// The text converted to UTF-8; std::nullopt when it is UTF-8 already.
std::optional<std::string> convertedToUtf8(std::string_view text) {
  if (text.starts_with("\xFF\xFE")) return utf16ToUtf8(text.data() + 2, text.size() - 2, false);
  if (text.starts_with("\xFE\xFF")) return utf16ToUtf8(text.data() + 2, text.size() - 2, true);
  if (text.starts_with("\xEF\xBB\xBF") || isAscii(text) || platform::isValidUtf8(text)) return std::nullopt;
  return platform::toUtf8(platform::fromAnsi(text));
}

}  // namespace

std::wstring scriptString(const char* utf8) { return utf8 ? platform::fromUtf8(utf8) : std::wstring(); }

size_t decryptScript(std::vector<unsigned char>& bytes) {
  if (bytes.empty()) return 0;
  bytes.resize(class_blowfish::paddedLength(bytes.size()));
  class_blowfish blowfish;
  blowfish.initialize(class_blowfish::kProgramKey, 0);
  blowfish.decrypt(bytes.data(), bytes.data(), bytes.size());
  // Text ends at the zero padding; UTF-16 text keeps its own zero bytes.
  const bool utf16 =
      bytes.size() >= 2 && ((bytes[0] == 0xFF && bytes[1] == 0xFE) || (bytes[0] == 0xFE && bytes[1] == 0xFF));
  if (!utf16) return strnlen(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  size_t length = bytes.size();
  while (length > 0 && bytes[length - 1] == 0) --length;
  return (length + 1) / 2 * 2;
}

bool parseScript(std::vector<unsigned char>& bytes, size_t length, TiXmlDocument& document) {
  bytes.resize(length);
  bytes.push_back(0);
  return parseScript(std::string_view(reinterpret_cast<const char*>(bytes.data()), length), document);
}

bool parseScript(std::string_view original, TiXmlDocument& document) {
  const std::optional<std::string> converted = convertedToUtf8(original);
  std::string_view text = converted ? std::string_view(*converted) : original;
  if (!converted && text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) return false;
  // A <data> child's text is a value: its spaces and line breaks are kept.
  TiXmlBase::SetCondenseWhiteSpace(false);
  document.Parse(text.data(), nullptr, TIXML_ENCODING_UTF8);
  return !document.Error();
}

}  // namespace engine
