// Pieces of the files family that scripts cannot reach on their own.
#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>
#include <iterator>

#include "functions/files/delimited_list.h"
#include "functions/files/path_filter.h"
#include "functions/files/text_file.h"
#include "platform/file_system.h"

namespace {

using api::files::joinDelimited;

TEST(JoinDelimited, CutsEveryTrailingDelimiterCharacter) {
  EXPECT_EQ(joinDelimited({}, L";"), L"");
  EXPECT_EQ(joinDelimited({L"a", L"b"}, L";"), L"a;b");
  EXPECT_EQ(joinDelimited({L"a", L"b;;"}, L";"), L"a;b");
  // The cut works on the delimiter's characters, not on the delimiter text.
  EXPECT_EQ(joinDelimited({L"x", L"yba"}, L"ab"), L"xaby");
  EXPECT_EQ(joinDelimited({L";;"}, L";"), L"");
}

TEST(JoinPath, AddsOneSeparatorAtTheSeam) {
  using platform::joinPath;
  EXPECT_EQ(joinPath(L"C:\\a", L"b"), L"C:\\a\\b");
  EXPECT_EQ(joinPath(L"C:\\a\\", L"b"), L"C:\\a\\b");
  EXPECT_EQ(joinPath(L"C:/a/", L"\\/b"), L"C:/a/b");
  EXPECT_EQ(joinPath(L"", L"b"), L"\\b");
  EXPECT_EQ(platform::parentPath(L"a\\b/c.txt"), L"a\\b");
  EXPECT_EQ(platform::parentPath(L"c.txt"), L"");
}

TEST(PathFilter, ExcludeWinsAndIncludeMustMatchTheWholePath) {
  api::files::PathFilter filter;
  ASSERT_TRUE(filter.compile(L"src(\\\\.*)?", L".*\\.log"));
  EXPECT_TRUE(filter.accepts(L"src\\a.txt"));
  EXPECT_FALSE(filter.accepts(L"src\\a.log"));
  EXPECT_FALSE(filter.accepts(L"other\\src\\a.txt"));
  ASSERT_TRUE(filter.compile(L"", L""));
  EXPECT_TRUE(filter.accepts(L"anything"));
  EXPECT_FALSE(filter.compile(L"(", L""));
  EXPECT_FALSE(filter.compile(L"", L"[a-"));
}

TEST(PathFilter, PathologicalIncludeCountsAsNo) {
  api::files::PathFilter filter;
  ASSERT_TRUE(filter.compile(L"(a+)+b", L""));
  EXPECT_FALSE(filter.accepts(std::wstring(5000, L'a')));
}

std::string readBytes(const wchar_t* path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(TextFile, LoneSurrogateFailsTheFileFromThenOn) {
  const wchar_t* path = L"text_file_unit.txt";
  {
    auto file = api::files::TextFile::open(path, false);
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->write(L"a\u00e9"));
    EXPECT_FALSE(file->write(L"b\xD800"));
    EXPECT_FALSE(file->write(L"c"));
  }
  EXPECT_EQ(readBytes(path), "a\xC3\xA9");
  DeleteFileW(path);
}

TEST(TextFile, MissingDirectoryCannotBeOpened) {
  EXPECT_EQ(api::files::TextFile::open(L"no\\such\\dir\\x.txt", true), nullptr);
}

}  // namespace
