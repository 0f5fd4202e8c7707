// UTF-8 / UTF-16 conversion: ASCII is copied directly and only the rest goes
// through the conversion proper, so mixed text must join up exactly.
#include <gtest/gtest.h>

#include "platform/text.h"

namespace platform {
namespace {

TEST(Text, MixedTextRoundTripsWhereverItsFirstOtherCharacterStands) {
  static const std::pair<std::string, std::wstring> kCases[] = {
      {"", L""},
      {"plain ascii", L"plain ascii"},
      {"\xC3\xA9t\xC3\xA9", L"\u00E9t\u00E9"},                 // non-ASCII first
      {"caf\xC3\xA9 au lait", L"caf\u00E9 au lait"},           // ASCII on both sides
      {"a\xE2\x82\xAC" "b", L"a\u20ACb"},                      // three bytes
      {"x\xF0\x9F\x98\x80y", sizeof(wchar_t) == 2 ? L"x\xD83D\xDE00y" : L"x\U0001F600y"},  // a surrogate pair
  };
  for (const auto& [utf8, wide] : kCases) {
    EXPECT_EQ(fromUtf8(utf8), wide) << utf8;
    EXPECT_EQ(toUtf8(wide), utf8) << utf8;
    std::string appended = "kept:";
    appendUtf8(wide, appended);
    EXPECT_EQ(appended, "kept:" + utf8);
    std::wstring widened = L"kept:";
    appendWide(utf8, widened);
    EXPECT_EQ(widened, L"kept:" + wide);
  }
}

TEST(Text, InvalidBytesAfterAsciiBecomeReplacementCharacters) {
  EXPECT_EQ(fromUtf8("ab\xFF" "c"), L"ab\uFFFD" "c");
  EXPECT_FALSE(isValidUtf8("ab\xFF"));
  EXPECT_FALSE(toUtf8Strict(std::wstring(L"ab") + wchar_t(0xD800)).has_value());
  EXPECT_EQ(toUtf8Strict(L"ab"), "ab");
}

}  // namespace
}  // namespace platform
