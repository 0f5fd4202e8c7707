// Path text: the joiner and the splits every family builds its paths with.
#include <gtest/gtest.h>

#include "platform/path.h"

namespace platform {
namespace {

TEST(Path, JoinAddsExactlyOneSeparatorAtTheSeam) {
  static constexpr std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> kCases[] = {
      {L"C:\\dir", L"a.txt", L"C:\\dir\\a.txt"},
      {L"C:\\dir\\", L"a.txt", L"C:\\dir\\a.txt"},
      {L"C:\\dir/", L"\\\\a.txt", L"C:\\dir/a.txt"},  // any run of separators on the right goes
      {L"C:\\dir", L"sub\\*", L"C:\\dir\\sub\\*"},
      {L"", L"a", L"\\a"},
      {L"dir", L"", L"dir\\"},
      {L"", L"", L"\\"},
      {L"\\\\server\\share", L"/x", L"\\\\server\\share\\x"},
  };
  for (const auto& [left, right, joined] : kCases) EXPECT_EQ(joinPath(left, right), joined) << left << " + " << right;
}

TEST(Path, SplitsAtTheLastSeparatorOfEitherKind) {
  static constexpr std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> kCases[] = {
      // path, parent, file name
      {L"C:\\dir\\a.txt", L"C:\\dir", L"a.txt"},
      {L"C:\\dir/a.txt", L"C:\\dir", L"a.txt"},
      {L"C:\\dir\\", L"C:\\dir", L""},
      {L"a.txt", L"", L"a.txt"},
      {L"\\a", L"", L"a"},
      {L"", L"", L""},
  };
  for (const auto& [path, parent, name] : kCases) {
    EXPECT_EQ(parentPath(path), parent) << path;
    EXPECT_EQ(fileName(path), name) << path;
  }
}

TEST(Path, SiblingsLiveInTheDirectoryOfThePatternThatListedThem) {
  EXPECT_EQ(siblingPath(L"C:\\dir\\*.log", L"b.log"), L"C:\\dir\\b.log");
  EXPECT_EQ(siblingPath(L"C:\\dir/*.log", L"b.log"), L"C:\\dir\\b.log");
  EXPECT_EQ(siblingPath(L"*.log", L"b.log"), L"b.log");  // relative to the current directory
  EXPECT_EQ(siblingPath(L"\\*.log", L"b.log"), L"b.log");
}

}  // namespace
}  // namespace platform
