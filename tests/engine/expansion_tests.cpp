// The one-pass expansion against the rules written down directly, on every
// short text over the characters that matter, and on nesting far deeper than
// recursion could follow.
#include <gtest/gtest.h>

#include <string>

#include "engine/expansion.h"
#include "tests/engine/expansion_reference.h"

namespace {

TEST(OnePassExpansion, AgreesOnEveryShortText) {
  const std::wstring alphabet = L"%[]ca1e";
  reference::FakeSource source;
  std::wstring text;
  size_t texts = 0;
  const auto visit = [&](auto& self, size_t length) -> void {
    ++texts;
    ASSERT_EQ(engine::expandReferences(text, source), reference::expand(text, source));
    if (length == 8) return;
    for (wchar_t c : alphabet) {
      text.push_back(c);
      self(self, length + 1);
      text.pop_back();
      if (HasFatalFailure()) return;
    }
  };
  visit(visit, 0);
  EXPECT_EQ(texts, 6725601u);  // every text of up to 8 characters
}

TEST(OnePassExpansion, AgreesOnNamedCases) {
  reference::FakeSource source;
  for (const wchar_t* text :
       {L"%c[%c[1]%]%", L"%c[%%]%", L"%v%%a%", L"%RaNdOm%", L"%1x%e%", L"%c[[1]]%", L"%x[%e%]%", L"[%a%]%a",
        L"%c[%c[%1%]%]%", L"%%%a%%%", L"%e%%%e%", L"%c[%]%[%"})
    EXPECT_EQ(engine::expandReferences(text, source), reference::expand(text, source));
}

std::wstring repeated(const wchar_t* part, size_t times) {
  std::wstring text;
  for (size_t i = 0; i < times; ++i) text += part;
  return text;
}

TEST(OnePassExpansion, DeepNestingNeedsNoRecursion) {
  reference::FakeSource source;
  const size_t levels = 200000;
  // c[1] is "1", so every level finds the next.
  const std::wstring nested = repeated(L"%c[", levels) + L"1" + repeated(L"]%", levels);
  EXPECT_EQ(engine::expandReferences(nested, source), L"1");
  const std::wstring unknown = repeated(L"%x[", levels) + L"1" + repeated(L"]%", levels);
  EXPECT_EQ(engine::expandReferences(unknown, source), unknown);
  const std::wstring open = repeated(L"%[", levels);
  EXPECT_EQ(engine::expandReferences(open, source), open);
}

// Nesting whose every index misses: long enough that the indexes are given up
// without asking the environment, except where it could answer otherwise (an
// environment variable, a failing name, a path separator, a name of dots).
TEST(OnePassExpansion, IndexesThatMissAgreeAndStayLinear) {
  reference::FakeSource source;
  for (const wchar_t* inner : {L"x", L"%e%", L"%1x%", L"a\\b", L"c:d", L"1", L"%c[1]%"})
    for (const wchar_t* level : {L"%c[", L"%c[%e%", L"%c[.. ", L"%c[%x%%"}) {
      const std::wstring text = repeated(level, 120) + inner + repeated(L"]%", 120);
      EXPECT_EQ(engine::expandReferences(text, source), reference::expand(text, source)) << text.substr(0, 40);
    }
  const std::wstring deep = repeated(L"%c[", 200000) + L"x" + repeated(L"]%", 200000);
  EXPECT_EQ(engine::expandReferences(deep, source), deep);
}

TEST(OnePassExpansion, SingleReferenceIsTheWholeText) {
  EXPECT_TRUE(engine::isSingleReference(L"%a%"));
  EXPECT_TRUE(engine::isSingleReference(L"%list[%i%]%"));
  EXPECT_FALSE(engine::isSingleReference(L"%a%%b%"));
  EXPECT_FALSE(engine::isSingleReference(L"%%a%"));
  EXPECT_FALSE(engine::isSingleReference(L"%a%b"));
  EXPECT_FALSE(engine::isSingleReference(L"%%"));
}

}  // namespace
