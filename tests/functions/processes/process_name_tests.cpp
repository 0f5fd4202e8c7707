// The process name rule of processWait and processKill, natively too.
#include <gtest/gtest.h>

#include "functions/processes/detail/process_name.h"

namespace {

using api::processes::detail::normaliseProcessName;

TEST(ProcessName, DoubledBackslashesCollapseButALeadingPairStays) {
  EXPECT_EQ(normaliseProcessName(L"C:\\\\dir\\\\app.exe"), L"C:\\dir\\app.exe");
  EXPECT_EQ(normaliseProcessName(L"C:\\dir\\app.exe"), L"C:\\dir\\app.exe");
  EXPECT_EQ(normaliseProcessName(L"\\\\server\\\\share\\app.exe"), L"\\\\server\\share\\app.exe");
  EXPECT_EQ(normaliseProcessName(L"a\\\\\\b"), L"a\\\\b");  // of three, one pair collapses
  EXPECT_EQ(normaliseProcessName(L"\\\\"), L"\\\\");
  EXPECT_EQ(normaliseProcessName(L"\\"), L"\\");
  EXPECT_EQ(normaliseProcessName(L""), L"");
}

}  // namespace
