// Units of the engine worth testing alone: integer conversion, variable
// expansion and index normalisation, the registry, the function list, and the
// cipher with its hexadecimal form.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "engine/blowfish.h"
#include "engine/cipher_text.h"
#include "engine/integer.h"
#include "engine/registry.h"
#include "engine/variables.h"
#include "functions/families.h"

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

TEST(Variables, DecimalIndexesAreZeroPaddedOthersKept) {
  EXPECT_EQ(engine::normaliseIndex(L"7"), L"0000000007");
  EXPECT_EQ(engine::normaliseIndex(L"0000000007"), L"0000000007");
  EXPECT_EQ(engine::normaliseIndex(L"x7"), L"x7");
  EXPECT_EQ(engine::normaliseIndex(L"-1"), L"-1");
  EXPECT_EQ(engine::normaliseIndex(L""), L"");
}

TEST(Registry, RefusesEmptyNullAndDuplicateRegistrations) {
  struct Dummy : engine::FunctionBase {
    void execute() override {}
    bool readAttributes() override { return true; }
  };
  engine::FunctionRegistry r;
  EXPECT_TRUE(r.registerPlain(L"x", engine::create<Dummy>));
  EXPECT_FALSE(r.registerRetBool(L"x", engine::create<Dummy>));
  EXPECT_EQ(r.lookup(L"x")->kind, engine::FunctionKind::Plain);
  EXPECT_FALSE(r.registerPlain(L"", engine::create<Dummy>));
  EXPECT_FALSE(r.registerPlain(nullptr, engine::create<Dummy>));
  EXPECT_FALSE(r.registerPlain(L"y", nullptr));
  EXPECT_EQ(r.size(), 1u);
  EXPECT_EQ(r.lookup(L"X"), nullptr);  // tags are case-sensitive
}

TEST(Registry, ProgramRegistryHasEveryBaseTagWithItsKind) {
  const engine::FunctionRegistry r = api::makeFunctionRegistry();
  for (const wchar_t* tag : {L"exit", L"trace", L"sleep", L"nothing", L"goto", L"onErrorGoTo", L"assign",
                             L"assignToken", L"addInt", L"addString", L"stringDelete", L"stringGet", L"stringTrim"})
    EXPECT_EQ(r.lookup(tag)->kind, engine::FunctionKind::Plain) << tag;
  EXPECT_EQ(r.lookup(L"traceSetFile")->kind, engine::FunctionKind::Error);
  EXPECT_EQ(r.lookup(L"test")->kind, engine::FunctionKind::Bool);
  EXPECT_EQ(r.lookup(L"for"), nullptr);
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

TEST(Blowfish, BuffersPadWithZerosAndRoundTripInPlace) {
  engine::class_blowfish cipher;
  cipher.initialize(engine::class_blowfish::kProgramKey, 0);
  for (size_t length : {0u, 1u, 7u, 8u, 9u, 16u, 17u}) {
    std::vector<unsigned char> text(engine::class_blowfish::paddedLength(length), 0);
    for (size_t i = 0; i < length; ++i) text[i] = static_cast<unsigned char>('a' + i);
    const std::vector<unsigned char> plain = text;
    EXPECT_EQ(cipher.encrypt(text.data(), text.data(), length), text.size());
    if (length) {
      EXPECT_NE(text, plain);
    }
    cipher.decrypt(text.data(), text.data(), text.size());
    EXPECT_EQ(text, plain) << length;
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

// A copy keeps its own key schedule: re-keying the original leaves it alone.
TEST(Blowfish, CopiesAreIndependent) {
  uint32_t expectedLeft = 1, expectedRight = 2;
  engine::class_blowfish original;
  original.initialize(engine::class_blowfish::kProgramKey, 0);
  original.encryptBlock(expectedLeft, expectedRight);
  const engine::class_blowfish copy = original;
  const auto otherKey = bytesOf("0123456789ABCDEF");
  original.initializeWithLength(otherKey.data(), otherKey.size());
  uint32_t l = 1, r = 2;
  copy.encryptBlock(l, r);
  EXPECT_EQ(l, expectedLeft);
  EXPECT_EQ(r, expectedRight);
}

}  // namespace

namespace {

TEST(CipherText, HexRoundTripsAndRefusesNonHex) {
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

// The companion command's output deciphers to the password it was given.
TEST(CipherText, CompanionCommandOutputDeciphers) {
  std::wstring command = L"\"" UPKEEP_PASSWORD_EXE L"\" \"pa ss\"";
  SECURITY_ATTRIBUTES inherit{sizeof(inherit), nullptr, TRUE};
  HANDLE readEnd = nullptr, writeEnd = nullptr;
  ASSERT_TRUE(CreatePipe(&readEnd, &writeEnd, &inherit, 0));
  SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = writeEnd;
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process));
  CloseHandle(writeEnd);
  std::string output;
  char buffer[256];
  DWORD read = 0;
  while (ReadFile(readEnd, buffer, sizeof buffer, &read, nullptr) && read) output.append(buffer, read);
  WaitForSingleObject(process.hProcess, INFINITE);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  CloseHandle(readEnd);
  while (!output.empty() && (output.back() == '\n' || output.back() == '\r')) output.pop_back();
  const auto plain = engine::decipherHex(std::wstring(output.begin(), output.end()));
  ASSERT_TRUE(plain) << output;
  EXPECT_EQ(std::string(plain->c_str()), "pa ss");
}

}  // namespace

namespace {

class Expansion : public ::testing::Test {
 protected:
  engine::HandleTable handles;
  engine::VariableStore variables{handles};
};

TEST_F(Expansion, ReferencesBracketsAndStrayPercents) {
  variables.set(L"i", L"7");
  variables.set(L"list[7]", L"seven");
  variables.set(L"a", L"A");
  EXPECT_EQ(variables.expand(L"%list[%i%]%"), L"seven");
  EXPECT_EQ(variables.expand(L"x%a%y%a%"), L"xAyA");
  EXPECT_EQ(variables.expand(L"100%"), L"100%");
  EXPECT_EQ(variables.expand(L"50%%"), L"50%");
  EXPECT_EQ(variables.expand(L"%a"), L"%a");
  EXPECT_EQ(variables.expand(L"%%a%%"), L"%a%");
  EXPECT_EQ(variables.expand(L"%nosuch%"), L"%nosuch%");
  // An unknown name is left to the environment, which keeps it as written.
  EXPECT_EQ(variables.expand(L"%nosuch%a%"), L"%nosuch%a%");
  EXPECT_EQ(variables.expand(L""), L"");
}

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
