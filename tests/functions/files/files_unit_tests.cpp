// Pieces of the files family that scripts cannot reach on their own.
#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>
#include <iterator>

#include "functions/files/detail/download_error.h"
#include "functions/files/detail/text_file.h"

namespace {

TEST(DownloadError, OnlyAFailureWithANonZeroLowWordFails) {
  using api::files::downloadError;
  EXPECT_EQ(downloadError(static_cast<int32_t>(0x80070005)), 5u);       // from a Win32 error
  EXPECT_EQ(downloadError(static_cast<int32_t>(0x800C0008)), 8u);       // INET_E_DOWNLOAD_FAILURE
  EXPECT_EQ(downloadError(static_cast<int32_t>(0x8004FFFF)), 0xFFFFu);  // the whole low word
  EXPECT_EQ(downloadError(static_cast<int32_t>(0x80040000)), 0u);       // failure, low word 0: success
  EXPECT_EQ(downloadError(0), 0u);
  EXPECT_EQ(downloadError(0x00040005), 0u);  // positive (a success code) with a low word
}

std::string readBytes(const wchar_t* path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(TextFile, LoneSurrogateFailsTheFileFromThenOn) {
  const wchar_t* path = L"text_file_unit.txt";
  {
    // Appended, so the bytes before the failure stay in the file itself.
    auto file = api::files::TextFile::open(path, true);
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->write(L"a\u00e9"));
    EXPECT_FALSE(file->write(L"b\xD800"));
    EXPECT_FALSE(file->write(L"c"));
  }
  EXPECT_EQ(readBytes(path), "a\xC3\xA9");
  DeleteFileW(path);
}

}  // namespace
