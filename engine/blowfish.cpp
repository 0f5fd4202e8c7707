#include "engine/blowfish.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace engine {
namespace {

#include "engine/blowfish_constants.inc"

// Blocks are two little-endian words: bytes 0-3 the left half, 4-7 the right.
uint32_t loadWord(const unsigned char* b) {
  return uint32_t{b[0]} | uint32_t{b[1]} << 8 | uint32_t{b[2]} << 16 | uint32_t{b[3]} << 24;
}

void storeWord(uint32_t w, unsigned char* b) {
  for (int i = 0; i < 4; ++i) b[i] = static_cast<unsigned char>(w >> (8 * i));
}

}  // namespace

const unsigned char class_blowfish::kProgramKey[12] = {'Z', 'r', '7', '(', 'P', 'm', '2', '!', 'u', '\t', 'C', '\t'};

uint32_t class_blowfish::f(uint32_t x) const {
  const uint32_t a = s_[x >> 24], b = s_[256 + ((x >> 16) & 0xFF)];
  const uint32_t c = s_[512 + ((x >> 8) & 0xFF)], d = s_[768 + (x & 0xFF)];
  return ((a + b) ^ c) + d;
}

void class_blowfish::encryptBlock(uint32_t& left, uint32_t& right) const {
  uint32_t l = left, r = right;
  for (int i = 0; i < 16; ++i) {
    l ^= p_[i];
    r ^= f(l);
    std::swap(l, r);
  }
  std::swap(l, r);
  right = r ^ p_[16];
  left = l ^ p_[17];
}

void class_blowfish::decryptBlock(uint32_t& left, uint32_t& right) const {
  uint32_t l = left, r = right;
  for (int i = 17; i > 1; --i) {
    l ^= p_[i];
    r ^= f(l);
    std::swap(l, r);
  }
  std::swap(l, r);
  right = r ^ p_[1];
  left = l ^ p_[0];
}

void class_blowfish::initialize(const unsigned char* key, int /*length*/) { initializeWithLength(key, 12); }

void class_blowfish::initializeWithLength(const unsigned char* key, size_t length) {
  std::copy(&kInitialP[0], &kInitialP[0] + 18, p_.begin());
  std::copy(&kInitialS[0][0], &kInitialS[0][0] + 4 * 256, s_.begin());
  size_t j = 0;
  for (int i = 0; i < 18; ++i) {
    uint32_t word = 0;
    for (int k = 0; k < 4; ++k, j = (j + 1) % length) word = word << 8 | key[j];
    p_[i] ^= word;
  }
  uint32_t l = 0, r = 0;
  for (int i = 0; i < 18; i += 2) {
    encryptBlock(l, r);
    p_[i] = l;
    p_[i + 1] = r;
  }
  for (int i = 0; i < 4 * 256; i += 2) {
    encryptBlock(l, r);
    s_[i] = l;
    s_[i + 1] = r;
  }
}

size_t class_blowfish::encrypt(const unsigned char* input, unsigned char* output, size_t length) const {
  const size_t padded = paddedLength(length);
  for (size_t offset = 0; offset < padded; offset += 8) {
    unsigned char block[8] = {};
    std::memcpy(block, input + offset, std::min<size_t>(8, length - offset));
    uint32_t l = loadWord(block), r = loadWord(block + 4);
    encryptBlock(l, r);
    storeWord(l, output + offset);
    storeWord(r, output + offset + 4);
  }
  return padded;
}

void class_blowfish::decrypt(const unsigned char* input, unsigned char* output, size_t length) const {
  if (length == 0) return;
  const size_t blocks = (length - 1) / 8 + 1;
  for (size_t offset = 0; offset < blocks * 8; offset += 8) {
    uint32_t l = loadWord(input + offset), r = loadWord(input + offset + 4);
    decryptBlock(l, r);
    storeWord(l, output + offset);
    storeWord(r, output + offset + 4);
  }
}

}  // namespace engine
