// The engine's pure parts, run under Wine and natively with AddressSanitizer
// and UndefinedBehaviorSanitizer (on platform/'s native stand-in): integers,
// index normalisation, the registry, function lists, the cipher, indexed
// names, and the platform calls they rely on, which must behave alike in both
// builds. Preparation and the execution loop run natively in the fuzz targets.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/blowfish.h"
#include "engine/cipher_text.h"
#include "engine/engine.h"
#include "engine/integer.h"
#include "engine/os_type.h"
#include "engine/registry.h"
#include "engine/variables.h"
#include "platform/format.h"
#include "platform/text.h"

namespace {

using engine::toInt;

TEST(Integer, ReadsLeadingDecimalDigitsLikeWcstol) {
  EXPECT_EQ(toInt(L"12abc"), 12);
  EXPECT_EQ(toInt(L"  -2"), -2);
  EXPECT_EQ(toInt(L"+7"), 7);
  EXPECT_EQ(toInt(L"abc"), 0);
  EXPECT_EQ(toInt(L""), 0);
  EXPECT_EQ(toInt(L"- 5"), 0);
  EXPECT_EQ(toInt(L"99999999999"), 2147483647);
  EXPECT_EQ(toInt(L"-99999999999"), -2147483647 - 1);
  EXPECT_EQ(toInt(L"-2147483648"), -2147483647 - 1);
}

// `os` names workstation versions only: 6.1 is 7, 6.2 and 6.3 are 8, 10.0 is 10.
TEST(OsType, NamesWorkstationVersionsOnly) {
  using C = engine::COsType;
  constexpr unsigned kWorkstation = 1, kServer = 3;
  const struct { unsigned major, minor, product; C::Class expected; } cases[] = {
      {6, 1, kWorkstation, C::Windows7},  {6, 2, kWorkstation, C::Windows8},
      {6, 3, kWorkstation, C::Windows8},  {10, 0, kWorkstation, C::Windows10},
      {6, 0, kWorkstation, C::Unknown},   {6, 4, kWorkstation, C::Unknown},
      {11, 0, kWorkstation, C::Unknown},  {10, 0, kServer, C::Unknown},
      {6, 1, kServer, C::Unknown},
  };
  for (const auto& c : cases)
    EXPECT_EQ(C::classify(c.major, c.minor, c.product), c.expected) << c.major << '.' << c.minor << '/' << c.product;
}

TEST(Registry, RefusesDuplicatesAndIsCaseSensitive) {
  struct Dummy : engine::FunctionBase {
    void execute() override {}
    static const engine::Parameters& parameters() { return engine::noParameters(); }
  };
  struct Flag : engine::FunctionRetBool {
    void execute() override {}
    static const engine::Parameters& parameters() { return engine::noParameters(); }
  };
  engine::FunctionRegistry r;
  EXPECT_TRUE(r.add(engine::tag<Dummy>(L"x")));
  EXPECT_FALSE(r.add(engine::tag<Flag>(L"x")));
  EXPECT_EQ(r.lookup("x")->kind, engine::FunctionKind::Plain);
  EXPECT_TRUE(r.add(engine::tag<Flag>(L"z")));
  EXPECT_EQ(r.lookup("z")->kind, engine::FunctionKind::Bool);
  EXPECT_EQ(r.size(), 2u);
  EXPECT_EQ(r.lookup("X"), nullptr);  // tags are case-sensitive
}

TEST(FunctionList, DeletingTheHeadDeletesAVeryLongListWithoutRecursion) {
  struct Counted : engine::FunctionBase {
    explicit Counted(int& n) : count(n) { ++count; }
    ~Counted() override { --count; }
    void execute() override {}
    bool readAttributes() override { return true; }
    int& count;
  };
  int alive = 0;
  auto head = std::make_unique<Counted>(alive);
  engine::FunctionBase* tail = head.get();
  for (int i = 0; i < 1000000; ++i) {
    tail->next = std::make_unique<Counted>(alive);
    tail = tail->next.get();
  }
  head.reset();
  EXPECT_EQ(alive, 0);
}

// Published Blowfish vectors: key, plaintext, ciphertext as big-endian words.
struct Vector {
  const char* key;
  uint32_t plain[2];
  uint32_t cipher[2];
};

std::vector<unsigned char> bytesOf(const char* hex) {
  std::vector<unsigned char> out;
  for (size_t i = 0; hex[i] && hex[i + 1]; i += 2)
    out.push_back(static_cast<unsigned char>(std::stoi(std::string(hex + i, 2), nullptr, 16)));
  return out;
}

TEST(Blowfish, PublishedKnownAnswers) {
  const Vector vectors[] = {
      {"0000000000000000", {0x00000000, 0x00000000}, {0x4EF99745, 0x6198DD78}},
      {"FFFFFFFFFFFFFFFF", {0xFFFFFFFF, 0xFFFFFFFF}, {0x51866FD5, 0xB85ECB8A}},
      {"3000000000000000", {0x10000000, 0x00000001}, {0x7D856F9A, 0x613063F2}},
      {"1111111111111111", {0x11111111, 0x11111111}, {0x2466DD87, 0x8B963C9D}},
      {"0123456789ABCDEF", {0x11111111, 0x11111111}, {0x61F9C380, 0x2281B096}},
      {"FEDCBA9876543210", {0x01234567, 0x89ABCDEF}, {0x0ACEAB0F, 0xC6A0A28D}},
  };
  for (const Vector& v : vectors) {
    engine::class_blowfish cipher;
    const auto key = bytesOf(v.key);
    cipher.initializeWithLength(key.data(), key.size());
    uint32_t l = v.plain[0], r = v.plain[1];
    cipher.encryptBlock(l, r);
    EXPECT_EQ(l, v.cipher[0]) << v.key;
    EXPECT_EQ(r, v.cipher[1]) << v.key;
    cipher.decryptBlock(l, r);
    EXPECT_EQ(l, v.plain[0]);
    EXPECT_EQ(r, v.plain[1]);
  }
}

TEST(Blowfish, ProgramKeyIgnoresTheLengthArgument) {
  engine::class_blowfish a, b;
  a.initialize(engine::class_blowfish::kProgramKey, 0);
  b.initializeWithLength(engine::class_blowfish::kProgramKey, 12);
  uint32_t la = 1, ra = 2, lb = 1, rb = 2;
  a.encryptBlock(la, ra);
  b.encryptBlock(lb, rb);
  EXPECT_EQ(la, lb);
  EXPECT_EQ(ra, rb);
}

TEST(CipherText, HexRoundTripsAndRefusesNonHex) {
  EXPECT_EQ(engine::encipherToHex("pa ss"), L"61B6E574A8486090");  // what upkeep-password.exe "pa ss" prints
  const std::wstring hex = engine::encipherToHex("s3cret!");
  EXPECT_EQ(hex.size(), 16u);
  const auto plain = engine::decipherHex(hex);
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->substr(0, 7), "s3cret!");
  EXPECT_EQ(plain->at(7), '\0');                          // zero padding
  EXPECT_TRUE(engine::decipherHex(L"0a1B2c3D4e5F6a7b"));  // either case
  EXPECT_FALSE(engine::decipherHex(L"zz"));
  EXPECT_FALSE(engine::decipherHex(L""));
}

}  // namespace

namespace {

class Expansion : public ::testing::Test {
 protected:
  engine::HandleTable handles;
  engine::VariableStore variables{handles};
};

TEST_F(Expansion, IndexedNamesNeedBaseBracketsAndAnIndex) {
  variables.set(L"arr[0000000003]", L"three");
  EXPECT_EQ(variables.get(L"arr[3]"), L"three");
  variables.set(L"[1]", L"not indexed");  // no base before the bracket
  EXPECT_EQ(variables.get(L"[1]"), L"not indexed");
  variables.set(L"a[]", L"empty index");  // too short to be indexed
  EXPECT_EQ(variables.get(L"a[]"), L"empty index");
  EXPECT_EQ(handles.findAs<engine::IndexedCollection>(L"arr")->values.size(), 1u);
}

}  // namespace

namespace {

// The log's templates follow msvcrt: %s wide, %hs narrow, %c a wide character,
// %p 16 upper-case hex digits. The native stand-in must print the same.
TEST(Format, FollowsTheWindowsRuntimeInBothBuilds) {
  void* pointer = reinterpret_cast<void*>(uintptr_t{0xDEADBEEF});
  EXPECT_EQ(platform::format(L"%s|%hs|%d|%5d|%-3d|%u|%x|%X|%c|%%|%p|%.2f|%010d", L"wide \u65e5", "narrow", -5, 42, 7,
                             4000000000u, 255, 255, L'\u00e9', pointer, 1.5, 7),
            L"wide \u65e5|narrow|-5|   42|7  |4000000000|ff|FF|\u00e9|%|00000000DEADBEEF|1.50|0000000007");
  EXPECT_EQ(platform::format(L"no conversions"), L"no conversions");
  EXPECT_EQ(platform::format(L""), L"");
}

TEST(Text, Utf8RoundTripsAndInvalidInputIsRefused) {
  const std::wstring text = L"a\u00e9\u20ac\U0001F600";
  EXPECT_EQ(platform::toUtf8(text), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(platform::fromUtf8(platform::toUtf8(text)), text);
  EXPECT_TRUE(platform::isValidUtf8("a\xC3\xA9"));
  for (const char* bad : {"\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF8\x88\x80\x80\x80", "a\x80"})
    EXPECT_FALSE(platform::isValidUtf8(bad)) << bad;
}

}  // namespace
