// The include and exclude filter of the recursive copy: whole-path matches,
// exclude first, and a refusal for what does not compile or cannot be decided.
#include <gtest/gtest.h>

#include "functions/files/detail/path_filter.h"

namespace api::files {
namespace {

TEST(PathFilter, ExcludeWinsAndIncludeMustMatchTheWholePath) {
  struct Case {
    const wchar_t *include, *exclude, *path;
    bool accepted;
  };
  static constexpr Case kCases[] = {
      {L"", L"", L"C:\\src\\a.txt", true},  // no filter: everything
      {L".*\\.txt", L"", L"C:\\src\\a.txt", true},
      {L".*\\.txt", L"", L"C:\\src\\a.txt.bak", false},  // a match must cover the whole path
      {L"\\.txt", L"", L"C:\\src\\a.txt", false},
      {L"", L".*\\\\obj(\\\\.*)?", L"C:\\src\\obj", false},
      {L"", L".*\\\\obj(\\\\.*)?", L"C:\\src\\object", true},
      {L".*", L".*\\.tmp", L"C:\\src\\x.tmp", false},  // exclude before include
      {L".*\\.TXT", L"", L"C:\\src\\a.txt", false},    // case counts
      {L"", L"", L"", true},
      {L".+", L"", L"", false},
  };
  for (const Case& c : kCases) {
    PathFilter filter;
    ASSERT_TRUE(filter.compile(c.include, c.exclude)) << c.include << " / " << c.exclude;
    EXPECT_EQ(filter.accepts(c.path), c.accepted) << c.include << " / " << c.exclude << " on " << c.path;
  }
}

TEST(PathFilter, RefusesWhatDoesNotCompileAndRejectsWhatCannotBeDecided) {
  PathFilter filter;
  EXPECT_FALSE(filter.compile(L"(", L""));
  EXPECT_FALSE(filter.compile(L"", L"[a-"));
  // A match beyond the matcher's bounds: no include, and an exclude that rejects.
  const std::wstring hard = L"(a+)+b", path(30, L'a');
  ASSERT_TRUE(filter.compile(hard, L""));
  EXPECT_FALSE(filter.accepts(path));
  ASSERT_TRUE(filter.compile(L"", hard));
  EXPECT_FALSE(filter.accepts(path));
  ASSERT_TRUE(filter.compile(L"", L""));  // compiling again clears the old expressions
  EXPECT_TRUE(filter.accepts(path));
}

}  // namespace
}  // namespace api::files
