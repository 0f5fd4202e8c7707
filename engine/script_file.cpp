#include "engine/script_file.h"

#include <tinyxml.h>

#include <cstring>

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

bool startsWith(const char* bytes, size_t length, std::string_view prefix) {
  return length >= prefix.size() && std::string_view(bytes, prefix.size()) == prefix;
}

}  // namespace

std::wstring scriptString(const char* utf8) {
  if (!utf8) return {};
  const size_t length = std::strlen(utf8);
  std::wstring out(length, L'\0');
  for (size_t i = 0; i < length; ++i) {
    const auto c = static_cast<unsigned char>(utf8[i]);
    if (c >= 0x80) return platform::fromUtf8(std::string_view(utf8, length));
    out[i] = static_cast<wchar_t>(c);
  }
  return out;
}

std::string scriptTextToUtf8(const char* bytes, size_t length) {
  if (startsWith(bytes, length, "\xFF\xFE")) return utf16ToUtf8(bytes + 2, length - 2, false);
  if (startsWith(bytes, length, "\xFE\xFF")) return utf16ToUtf8(bytes + 2, length - 2, true);
  if (startsWith(bytes, length, "\xEF\xBB\xBF")) return std::string(bytes + 3, length - 3);
  const std::string_view text(bytes, length);
  if (platform::isValidUtf8(text)) return std::string(text);
  return platform::toUtf8(platform::fromAnsi(text));
}

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

bool parseScript(const char* bytes, size_t length, TiXmlDocument& document) {
  const std::string text = scriptTextToUtf8(bytes, length);
  if (text.find_first_not_of(" \t\r\n") == std::string::npos) return false;
  // A <data> child's text is a value: its spaces and line breaks are kept.
  TiXmlBase::SetCondenseWhiteSpace(false);
  document.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
  return !document.Error();
}

}  // namespace engine
