// libFuzzer target for the cipher: arbitrary bytes deciphered as an /encfile
// script is (then parsed as its text), and as an enciphered password in
// hexadecimal; enciphering what was deciphered must give the input back.
#include <tinyxml.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "engine/blowfish.h"
#include "engine/cipher_text.h"
#include "engine/script_file.h"

namespace {

constexpr size_t kMaxInput = 8192;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxInput) return 0;
  std::vector<unsigned char> bytes(data, data + size);
  const size_t length = engine::decryptScript(bytes);
  if (length > bytes.size() || bytes.size() != engine::class_blowfish::paddedLength(size)) std::abort();
  TiXmlDocument document;
  std::vector<unsigned char> text = bytes;  // parsing cuts its bytes to the text
  engine::parseScript(text, length, document);

  engine::class_blowfish blowfish;
  blowfish.initialize(engine::class_blowfish::kProgramKey, 0);
  std::vector<unsigned char> again(bytes.size());
  blowfish.encrypt(bytes.data(), again.data(), bytes.size());
  if (size > 0 && std::memcmp(again.data(), data, size) != 0) std::abort();

  const std::wstring hex(data, data + size);
  if (const auto plain = engine::decipherHex(hex)) {
    if (plain->size() != size / 2) std::abort();
  }
  return 0;
}
