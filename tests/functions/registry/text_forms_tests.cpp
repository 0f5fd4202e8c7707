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

}  // namespace
}  // namespace api::registry::detail
