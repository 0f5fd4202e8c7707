// The index rules behind stringGet, stringDelete, stringTrim and for loops.
#include <gtest/gtest.h>

#include "engine/ascii.h"
#include "functions/base/detail/string_ops.h"

namespace {

using namespace api::base;

TEST(StringOps, SpanStopsAtCountOrFirstStopCharacter) {
  EXPECT_EQ(spanOf(L"ab,c;d", 0, 100, L";,"), L"ab");
  EXPECT_EQ(spanOf(L"abcdef", 1, 3, L";"), L"bcd");
  EXPECT_EQ(spanOf(L"abc", 3, 5, L";"), L"");
  EXPECT_EQ(spanOf(L"abc", 0xFFFFFFFFu, 5, L";"), L"");  // "-1" wraps to a huge index
  EXPECT_EQ(spanOf(L";x", 0, 5, L";"), L"");
  EXPECT_EQ(spanOf(L"abc", 1, 0xFFFFFFFFu, L";"), L"bc");
}

TEST(StringOps, DeleteKeepsTheStopCharacterAndIgnoresPositionsPastTheEnd) {
  std::wstring text = L"abc;def";
  EXPECT_TRUE(deleteSpan(text, 0, 2, L";"));
  EXPECT_EQ(text, L"c;def");
  EXPECT_TRUE(deleteSpan(text, 0, 10, L";"));
  EXPECT_EQ(text, L";def");
  EXPECT_FALSE(deleteSpan(text, 4, 1, L";"));
  EXPECT_EQ(text, L";def");
  EXPECT_TRUE(deleteSpan(text, 2, 10, L";"));
  EXPECT_EQ(text, L";d");
}

TEST(StringOps, TrimBothEndsAndEverything) {
  EXPECT_EQ(trimChars(L"; a b ;", L" ;"), L"a b");
  EXPECT_EQ(trimChars(L";;;", L";"), L"");
  EXPECT_EQ(trimChars(L"", L";"), L"");
  EXPECT_EQ(trimChars(L"a", L";"), L"a");
}

TEST(StringOps, CompareFoldsOnlyAsciiLetters) {
  using engine::compareIgnoreAsciiCase;
  EXPECT_EQ(compareIgnoreAsciiCase(L"abc", L"ABC"), 0);
  EXPECT_LT(compareIgnoreAsciiCase(L"10", L"9"), 0);
  EXPECT_LT(compareIgnoreAsciiCase(L"ab", L"abc"), 0);
  EXPECT_NE(compareIgnoreAsciiCase(L"\u00e9", L"\u00c9"), 0);
  EXPECT_EQ(compareIgnoreAsciiCase(L"", L""), 0);
}

}  // namespace
