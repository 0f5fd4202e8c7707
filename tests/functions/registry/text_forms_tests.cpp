// The text forms of registry data, away from the registry: the edges that
// script cases reach only awkwardly.
#include <gtest/gtest.h>

#include "functions/registry/detail/text_forms.h"

namespace api::registry::detail {
namespace {

std::wstring roundTrip(uint32_t type, std::wstring_view text) {
  std::vector<uint8_t> bytes;
  EXPECT_EQ(textToData(type, text, bytes), 0u);
  return *dataToText(type, bytes);
}

TEST(TextForms, BinaryDigitsArePairedAndOnlyConsumedDigitsAreChecked) {
  EXPECT_EQ(roundTrip(Binary, L"00017F80FEg"), L"00017f80fe");  // the odd last character is never read
  std::vector<uint8_t> bytes;
  for (const wchar_t* bad : {L"0 ", L"-1", L"x0", L"\x0664\x0664"}) EXPECT_EQ(textToData(Binary, bad, bytes), 111u);
}

TEST(TextForms, NumbersReadLikeWtoiAndShortDataIsZeroExtended) {
  EXPECT_EQ(roundTrip(Dword, L"\t+42x"), L"42");
  EXPECT_EQ(roundTrip(Dword, L"x42"), L"0");
  EXPECT_EQ(roundTrip(Qword, L"-18446744073709551616"), L"9223372036854775808");
  EXPECT_EQ(*dataToText(Dword, {0x78, 0x56, 0x34}), L"3430008");
  EXPECT_EQ(*dataToText(Dword, {1, 0, 0, 0, 9}), L"1");
  EXPECT_EQ(*dataToText(Qword, {}), L"0");
}

TEST(TextForms, StringsEndAtTheirFirstZeroAndListsLoseTrailingEmptyStrings) {
  EXPECT_EQ(*dataToText(Sz, {'a', 0, 0, 0, 'b', 0}), L"a");
  EXPECT_EQ(*dataToText(Sz, {'a', 0, 'b'}), L"a");  // an odd last byte is dropped
  EXPECT_EQ(roundTrip(MultiSz, L"|a"), L"|a");
  EXPECT_EQ(roundTrip(MultiSz, L"a||"), L"a");
  std::vector<uint8_t> bytes;
  EXPECT_EQ(textToData(MultiSz, L"a|b", bytes), 0u);
  EXPECT_EQ(bytes.size(), 3u * 2 + 4);
}

// Each type both ways: the text a script writes, the bytes stored (as hex),
// and the text regRead gives back for those bytes.
TEST(TextForms, EachTypeFromTextToBytesAndBack) {
  struct Case {
    uint32_t type;
    std::wstring_view text;
    std::string_view bytes;
    std::wstring_view back;
  };
  static constexpr Case kCases[] = {
      {Sz, L"", "0000", L""},
      {Sz, L"a\u00e9", "6100e9000000", L"a\u00e9"},
      {ExpandSz, L"%windir%", "2500770069006e0064006900720025000000", L"%windir%"},  // expanded by regRead only
      {Binary, L"", "", L""},
      {Binary, L"7", "", L""},  // a lone digit is dropped
      {Binary, L"aBc", "ab", L"ab"},
      {Binary, L"00FF", "00ff", L"00ff"},
      {Dword, L"", "00000000", L"0"},
      {Dword, L"-1", "ffffffff", L"4294967295"},
      {Dword, L"4294967295", "ffffffff", L"4294967295"},
      {Dword, L"4294967296", "ffffffff", L"4294967295"},  // clamped at the top
      {Dword, L"-2147483648", "00000080", L"2147483648"},
      {Dword, L"-2147483649", "00000080", L"2147483648"},  // clamped at the signed bottom
      {Dword, L" \n-0", "00000000", L"0"},
      {Dword, L"+", "00000000", L"0"},
      {Qword, L"18446744073709551616", "ffffffffffffffff", L"18446744073709551615"},
      {Qword, L"-9223372036854775809", "0000000000000080", L"9223372036854775808"},
      {Qword, L"258", "0201000000000000", L"258"},
      {MultiSz, L"", "0000", L""},  // an empty list: the terminator alone
      {MultiSz, L"a", "610000000000", L"a"},
      {MultiSz, L"a||b", "610000000000620000000000", L"a||b"},
      {MultiSz, L"|", "000000000000", L""},  // only empty strings: nothing to show
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(testing::Message() << c.type << " '" << std::wstring(c.text) << "'");
    std::vector<uint8_t> bytes;
    ASSERT_EQ(textToData(c.type, c.text, bytes), 0u);
    std::string hex;
    for (const uint8_t b : bytes) hex += "0123456789abcdef"[b >> 4], hex += "0123456789abcdef"[b & 15];
    EXPECT_EQ(hex, c.bytes);
    EXPECT_EQ(dataToText(c.type, bytes), std::wstring(c.back));
  }
}

TEST(TextForms, OnlyTheSixTypesHaveATextForm) {
  for (const uint32_t type : {0u, 5u, 6u, 8u, 9u, 10u, 12u, 0xFFFFFFFFu}) {
    std::vector<uint8_t> bytes{1};
    EXPECT_EQ(textToData(type, L"1", bytes), 1630u) << type;
    EXPECT_TRUE(bytes.empty()) << type;
    EXPECT_FALSE(dataToText(type, {0x31, 0})) << type;
  }
  for (const wchar_t* name : {L"REG_SZ", L"REG_EXPAND_SZ", L"REG_BINARY", L"REG_DWORD", L"REG_MULTI_SZ", L"REG_QWORD"})
    EXPECT_NE(typeCode(name), 0u) << name;
  for (const wchar_t* name : {L"", L"reg_sz", L"REG_NONE", L"REG_LINK", L"REG_DWORD_BIG_ENDIAN", L"SZ", L" REG_SZ"})
    EXPECT_EQ(typeCode(name), 0u) << name;
}

TEST(TextForms, StoredDataOfOddShapesStillReads) {
  EXPECT_EQ(dataToText(Sz, {}), L"");
  EXPECT_EQ(dataToText(MultiSz, {}), L"");
  EXPECT_EQ(dataToText(MultiSz, {'a', 0, 0, 0, 0, 0, 'b', 0}), L"a||b");  // the list terminator missing
  EXPECT_EQ(dataToText(Binary, {}), L"");
  EXPECT_EQ(dataToText(Dword, {}), L"0");
  EXPECT_EQ(dataToText(Qword, {1, 2, 3, 4, 5, 6, 7, 8, 9}), L"578437695752307201");  // the ninth byte ignored
}

}  // namespace
}  // namespace api::registry::detail
