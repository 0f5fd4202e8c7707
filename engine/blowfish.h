#pragma once
// Blowfish (16 rounds) in ECB mode with zero padding, used for encrypted
// scripts and passwords. The key is built into the program, so this keeps a
// text from casual reading, not from a determined reader.
#include <array>
#include <cstddef>
#include <cstdint>

namespace engine {

class class_blowfish {
 public:
  // The program's fixed key: "Zr7(Pm2!u", TAB, 'C', TAB.
  static const unsigned char kProgramKey[12];

  // Copies are independent: the key schedule is held by value.
  class_blowfish() = default;
  virtual ~class_blowfish() = default;

  // Key schedule over 12 key bytes; `length` is ignored (callers pass 0).
  void initialize(const unsigned char* key, int length);
  // Key schedule over a key of any length from 1 to 56 bytes.
  void initializeWithLength(const unsigned char* key, size_t length);

  // Encrypts `length` bytes into `output`, zero-padding the last block; returns
  // the padded length. `output` holds length rounded up to 8; may equal input.
  size_t encrypt(const unsigned char* input, unsigned char* output, size_t length) const;
  // Decrypts ((length - 1) / 8) + 1 whole blocks; may work in place.
  void decrypt(const unsigned char* input, unsigned char* output, size_t length) const;

  void encryptBlock(uint32_t& left, uint32_t& right) const;
  void decryptBlock(uint32_t& left, uint32_t& right) const;

  static size_t paddedLength(size_t length) { return (length + 7) / 8 * 8; }

 private:
  uint32_t f(uint32_t x) const;

  std::array<uint32_t, 18> p_{};
  std::array<uint32_t, 4 * 256> s_{};  // the four S-boxes, one after another
};

}  // namespace engine
