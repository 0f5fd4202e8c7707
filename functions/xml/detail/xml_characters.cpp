#include "functions/xml/detail/xml_characters.h"

namespace api::xml {
namespace {

// One UTF-8 character at `at` (advanced past it); 0 for a malformed sequence.
char32_t nextCharacter(std::string_view text, size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  const int extra = lead < 0x80 ? 0 : lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : -1;
  if (extra < 0 || at + extra > text.size()) return 0;
  char32_t c = extra == 0 ? lead : lead & (0x3F >> extra);
  for (int i = 0; i < extra; ++i) c = c << 6 | (static_cast<unsigned char>(text[at++]) & 0x3F);
  return c;
}

bool isNameStart(char32_t c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || (c >= 0xC0 && c <= 0xD6) ||
         (c >= 0xD8 && c <= 0xF6) || (c >= 0xF8 && c <= 0x2FF) || (c >= 0x370 && c <= 0x37D) ||
         (c >= 0x37F && c <= 0x1FFF) || (c >= 0x200C && c <= 0x200D) || (c >= 0x2070 && c <= 0x218F) ||
         (c >= 0x2C00 && c <= 0x2FEF) || (c >= 0x3001 && c <= 0xD7FF) || (c >= 0xF900 && c <= 0xFDCF) ||
         (c >= 0xFDF0 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0xEFFFF);
}

bool isNameCharacter(char32_t c) {
  return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == 0xB7 ||
         (c >= 0x300 && c <= 0x36F) || (c >= 0x203F && c <= 0x2040);
}

bool isXmlCharacter(char32_t c) {
  return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0x10FFFF);
}

}  // namespace

bool isXmlName(std::string_view text) {
  size_t at = 0;
  if (text.empty() || !isNameStart(nextCharacter(text, at))) return false;
  while (at < text.size())
    if (!isNameCharacter(nextCharacter(text, at))) return false;
  return true;
}

bool isXmlText(std::string_view text) {
  for (size_t at = 0; at < text.size();)
    if (!isXmlCharacter(nextCharacter(text, at))) return false;
  return true;
}

}  // namespace api::xml
