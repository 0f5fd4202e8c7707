// The text forms of registry data, away from the registry: the edges that
// script cases reach only awkwardly.
#include <gtest/gtest.h>

#include "functions/registry/detail/text_forms.h"

namespace api::registry::detail {
namespace {

std::vector<uint8_t> bytesOf(uint32_t type, std::wstring_view text) {
  std::vector<uint8_t> bytes;
  EXPECT_EQ(textToData(type, text, bytes), 0u) << "for " << std::string(text.begin(), text.end());
  return bytes;
}

std::wstring roundTrip(uint32_t type, std::wstring_view text) { return *dataToText(type, bytesOf(type, text)); }

TEST(TextForms, TypeNamesAreExact) {
  EXPECT_EQ(typeCode(L"REG_QWORD"), 11u);
  EXPECT_EQ(typeCode(L"REG_MULTI_SZ"), 7u);
  EXPECT_EQ(typeCode(L"reg_sz"), 0u);
  EXPECT_EQ(typeCode(L"REG_SZ "), 0u);
  EXPECT_EQ(typeCode(L"REG_NONE"), 0u);
  std::vector<uint8_t> bytes;
  EXPECT_EQ(textToData(0, L"x", bytes), 1630u);
  EXPECT_EQ(textToData(8, L"x", bytes), 1630u);  // REG_RESOURCE_LIST has no text form
  EXPECT_FALSE(dataToText(0, {1, 2}));
}

TEST(TextForms, BinaryDigitsArePairedAndOnlyConsumedDigitsAreChecked) {
  EXPECT_EQ(bytesOf(Binary, L"0AfF"), (std::vector<uint8_t>{0x0a, 0xff}));
  EXPECT_EQ(bytesOf(Binary, L"0ag"), (std::vector<uint8_t>{0x0a}));  // the odd last character is never read
  std::vector<uint8_t> bytes;
  for (const wchar_t* bad : {L"g0", L"0 ", L"-1", L"x0", L"\x0664\x0664"})
    EXPECT_EQ(textToData(Binary, bad, bytes), 111u);
  EXPECT_EQ(roundTrip(Binary, L"00017F80FE"), L"00017f80fe");
}

TEST(TextForms, NumbersCoverTheUnsignedAndSignedRange) {
  EXPECT_EQ(bytesOf(Dword, L"-1"), (std::vector<uint8_t>{0xff, 0xff, 0xff, 0xff}));
  EXPECT_EQ(bytesOf(Qword, L"-2"), (std::vector<uint8_t>{0xfe, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff}));
  EXPECT_EQ(roundTrip(Dword, L"4294967296"), L"4294967295");
  EXPECT_EQ(roundTrip(Dword, L"-2147483649"), L"2147483648");
  EXPECT_EQ(roundTrip(Qword, L"18446744073709551616"), L"18446744073709551615");
  EXPECT_EQ(roundTrip(Qword, L"-9223372036854775809"), L"9223372036854775808");
  EXPECT_EQ(roundTrip(Dword, L"\t+42x"), L"42");
  EXPECT_EQ(roundTrip(Dword, L"x42"), L"0");
  EXPECT_EQ(roundTrip(Dword, L"-0"), L"0");
  // Short data reads as if zero-extended; longer data uses the low bytes.
  EXPECT_EQ(*dataToText(Dword, {0x78, 0x56, 0x34}), L"3430008");
  EXPECT_EQ(*dataToText(Dword, {1, 0, 0, 0, 9}), L"1");
  EXPECT_EQ(*dataToText(Qword, {}), L"0");
}

TEST(TextForms, StringsEndAtTheirFirstZero) {
  EXPECT_EQ(bytesOf(Sz, L"ab").size(), 6u);
  EXPECT_EQ(bytesOf(Sz, L"").size(), 2u);
  EXPECT_EQ(*dataToText(Sz, {'a', 0, 0, 0, 'b', 0}), L"a");
  EXPECT_EQ(*dataToText(Sz, {'a', 0, 'b'}), L"a");  // an odd last byte is dropped
}

TEST(TextForms, MultiStringsSplitAtBarsAndLoseTrailingEmptyStrings) {
  EXPECT_EQ(bytesOf(MultiSz, L"").size(), 2u);
  EXPECT_EQ(bytesOf(MultiSz, L"a|b").size(), 3u * 2 + 4);
  EXPECT_EQ(roundTrip(MultiSz, L"a||b"), L"a||b");
  EXPECT_EQ(roundTrip(MultiSz, L"|a"), L"|a");
  EXPECT_EQ(roundTrip(MultiSz, L"a||"), L"a");
  EXPECT_EQ(roundTrip(MultiSz, L"|"), L"");
}

}  // namespace
}  // namespace api::registry::detail
