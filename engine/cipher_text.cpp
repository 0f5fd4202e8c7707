#include "engine/cipher_text.h"

#include <vector>

#include "engine/blowfish.h"

namespace engine {
namespace {

int hexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  return -1;
}

// Keyed once, where it lives, on first use.
class ProgramCipher : public class_blowfish {
 public:
  ProgramCipher() { initialize(kProgramKey, 0); }
};

const class_blowfish& programCipher() {
  static const ProgramCipher cipher;
  return cipher;
}

}  // namespace

std::wstring encipherToHex(std::string_view plain) {
  std::vector<unsigned char> bytes(class_blowfish::paddedLength(plain.size()));
  programCipher().encrypt(reinterpret_cast<const unsigned char*>(plain.data()), bytes.data(), plain.size());
  static const wchar_t digits[] = L"0123456789ABCDEF";
  std::wstring hex;
  for (unsigned char b : bytes) {
    hex.push_back(digits[b >> 4]);
    hex.push_back(digits[b & 15]);
  }
  return hex;
}

std::optional<std::string> decipherHex(std::wstring_view hex) {
  std::vector<unsigned char> bytes(hex.size() / 2);
  for (size_t i = 0; i < bytes.size(); ++i) {
    const int high = hexDigit(hex[2 * i]), low = hexDigit(hex[2 * i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes[i] = static_cast<unsigned char>(high << 4 | low);
  }
  if (bytes.empty()) return std::nullopt;
  const size_t length = bytes.size();
  bytes.resize(class_blowfish::paddedLength(length));  // whole blocks for the cipher
  programCipher().decrypt(bytes.data(), bytes.data(), bytes.size());
  return std::string(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
}

}  // namespace engine
