// Replacing and appending to files through the fault seam, armed in-process:
// whatever step fails, the old bytes stay and no new file is left behind.
#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>
#include <iterator>
#include <string>

#include "platform/fault.h"
#include "platform/output_file.h"

namespace {

using platform::Call;

std::string readBytes(const std::wstring& path) {
  std::ifstream in(path.c_str(), std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Files whose names start with `prefix` in the current directory.
int countFiles(const std::wstring& prefix) {
  WIN32_FIND_DATAW entry;
  HANDLE find = FindFirstFileW((prefix + L"*").c_str(), &entry);
  if (find == INVALID_HANDLE_VALUE) return 0;
  int count = 0;
  do ++count;
  while (FindNextFileW(find, &entry));
  FindClose(find);
  return count;
}

class Replace : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(platform::replaceFile(path, "old bytes"), 0u); }
  void TearDown() override {
    platform::clearFaults();
    DeleteFileW(path.c_str());
  }
  const std::wstring path = L"replace_unit.txt";
  const std::string big = std::string(200000, 'n');  // four blocks
};

TEST_F(Replace, EveryFailingStepKeepsTheOldFileAndLeavesNoOther) {
  const struct {
    Call call;
    unsigned nth;
  } faults[] = {{Call::Create, 1}, {Call::Write, 1}, {Call::Write, 3}, {Call::Flush, 1}, {Call::Close, 1},
                {Call::Replace, 1}};
  for (const auto& fault : faults) {
    SCOPED_TRACE(static_cast<int>(fault.call) * 10 + static_cast<int>(fault.nth));
    platform::failCall(fault.call, fault.nth, 1117);
    EXPECT_EQ(platform::replaceFile(path, big), 1117u);
    platform::clearFaults();
    EXPECT_EQ(readBytes(path), "old bytes");
    EXPECT_EQ(countFiles(path), 1);
  }
  EXPECT_EQ(platform::replaceFile(path, big), 0u);
  EXPECT_EQ(readBytes(path), big);
  EXPECT_EQ(countFiles(path), 1);
}

TEST_F(Replace, TargetsThatCannotBeWrittenFailBeforeAnyWrite) {
  EXPECT_EQ(platform::replaceFile(L"no\\such\\dir\\x.txt", "x"), static_cast<uint32_t>(ERROR_PATH_NOT_FOUND));
  ASSERT_TRUE(CreateDirectoryW(L"replace_unit_dir", nullptr));
  EXPECT_EQ(platform::replaceFile(L"replace_unit_dir", "x"), static_cast<uint32_t>(ERROR_ACCESS_DENIED));
  RemoveDirectoryW(L"replace_unit_dir");
  HANDLE held = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(platform::replaceFile(path, "x"), static_cast<uint32_t>(ERROR_SHARING_VIOLATION));
  CloseHandle(held);
  EXPECT_EQ(readBytes(path), "old bytes");
}

TEST(OutputFile, AFailedAppendIsCutBackToWhereItStarted) {
  const std::wstring path = L"append_unit.txt";
  platform::OutputFile file;
  ASSERT_EQ(file.open(path, platform::OutputFile::Mode::Truncate), 0u);
  ASSERT_EQ(file.write("kept;"), 0u);
  platform::failCall(Call::Write, 3, 112);
  EXPECT_EQ(file.write(std::string(200000, 'x')), 112u);
  platform::clearFaults();
  EXPECT_EQ(file.write("more"), 0u);
  EXPECT_EQ(file.close(), 0u);
  EXPECT_EQ(readBytes(path), "kept;more");
  DeleteFileW(path.c_str());
}

TEST(Fault, ArmsFromTextAndRefusesWhatIsNotAFault) {
  EXPECT_TRUE(platform::failCallFromText("write:2:112"));
  EXPECT_EQ(platform::injectedFault(Call::Write), 0u);
  EXPECT_EQ(platform::injectedFault(Call::Write), 112u);
  EXPECT_EQ(platform::injectedFault(Call::Write), 112u);  // a full disk stays full
  platform::clearFaults();
  EXPECT_EQ(platform::injectedFault(Call::Write), 0u);
  for (const char* bad : {"", "write", "write:2", "writ:1:5", "write:0:5", "write:1:0", "write:x:5", "write:1:5:"})
    EXPECT_FALSE(platform::failCallFromText(bad)) << bad;
}

}  // namespace
