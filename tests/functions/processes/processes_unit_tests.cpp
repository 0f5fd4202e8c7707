// Pieces of the processes family that scripts cannot reach under Wine, where
// no logon can be impersonated: the password rules alone, what the
// guarded call leaves behind, and where an impersonation ends.
#include <gtest/gtest.h>
#include <windows.h>

#include <optional>
#include <string>

#include "engine/cipher_text.h"
#include "engine/runtime.h"
#include "functions/processes/detail/impersonation.h"
#include "functions/processes/detail/password.h"
#include "platform/library.h"
#include "platform/text.h"

namespace {

TEST(Password, WhatUpkeepPasswordWritesDecodesToThePassword) {
  using api::processes::detail::decipherPassword;
  // upkeep-password.exe writes these two calls' result.
  for (const std::wstring password : {L"s", L"Secret12", L"P\u00e4ss w\u00f6rd 1234567"})
    EXPECT_EQ(decipherPassword(engine::encipherToHex(platform::toAnsi(password))), password);
  EXPECT_EQ(decipherPassword(L""), std::nullopt);
  EXPECT_EQ(decipherPassword(L"A"), std::nullopt);  // no whole byte
  EXPECT_EQ(decipherPassword(L"0G"), std::nullopt);
}

const std::wstring kLibrary = ENTRY_POINTS_DLL;

TEST(CallExport, ReportsCrashesAndFreesTheLibraryOnEveryPath) {
  struct Case {
    const char* name;
    uint32_t code;
    bool crashed;
  };
  for (const Case c : {Case{"returnFive", 5, false}, Case{"accessViolation", 0, true}, Case{"overflowStack", 0, true},
                       Case{"throwException", 0, true}, Case{"callAbort", 0, true}, Case{"noSuchExport", 127, false}}) {
    const platform::ExportCall call = platform::callExport(kLibrary, c.name, 0, L"");
    EXPECT_EQ(call.crashed, c.crashed) << c.name;
    if (!c.crashed) {
      EXPECT_EQ(call.code, c.code) << c.name;
    }
    EXPECT_EQ(GetModuleHandleW(kLibrary.c_str()), nullptr) << c.name;
  }
}

bool hasThreadToken() {
  HANDLE token = nullptr;
  if (!OpenThreadToken(GetCurrentThread(), TOKEN_QUERY, TRUE, &token)) return false;
  CloseHandle(token);
  return true;
}

platform::UniqueToken impersonateSelf() {
  platform::UniqueToken token;
  if (ImpersonateSelf(SecurityImpersonation)) OpenThreadToken(GetCurrentThread(), TOKEN_ALL_ACCESS, TRUE, token.put());
  return token;
}

TEST(CallExport, TheExportActsAsTheSameUserAsTheCaller) {
  EXPECT_EQ(platform::callExport(kLibrary, "threadToken", 0, L"").code, static_cast<uint32_t>(ERROR_NO_TOKEN));
  ASSERT_TRUE(impersonateSelf());
  EXPECT_EQ(platform::callExport(kLibrary, "threadToken", 0, L"").code, 0u);
  RevertToSelf();
}

TEST(Impersonation, ALaterLogonReplacesTheTokenAndTheRunsEndRevertsIt) {
  using namespace api::processes::detail;
  engine::Runtime runtime;
  keepImpersonation(runtime, impersonateSelf());
  keepImpersonation(runtime, impersonateSelf());
  EXPECT_TRUE(hasThreadToken());  // replacing the first token did not end the second impersonation
  runtime.impersonation.reset();  // as the engine's reset does
  EXPECT_FALSE(hasThreadToken());

  keepImpersonation(runtime, impersonateSelf());
  EXPECT_EQ(endImpersonation(runtime), 0u);
  EXPECT_FALSE(hasThreadToken());
  EXPECT_EQ(runtime.impersonation, nullptr);
  EXPECT_EQ(endImpersonation(runtime), 0u);  // without one, reverting still succeeds
}

}  // namespace
