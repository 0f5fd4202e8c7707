// Engine units that need Windows: the program's registry of every family,
// and the companion password command. The pure units are in core_tests.cpp.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "engine/cipher_text.h"
#include "engine/registry.h"
#include "functions/families.h"

namespace {

TEST(Registry, ProgramRegistryHasEveryBaseTagWithItsKind) {
  const engine::FunctionRegistry r = api::makeFunctionRegistry();
  for (const wchar_t* tag : {L"exit", L"trace", L"sleep", L"nothing", L"goto", L"onErrorGoTo", L"assign",
                             L"assignToken", L"addInt", L"addString", L"stringDelete", L"stringGet", L"stringTrim"})
    EXPECT_EQ(r.lookup(tag)->kind, engine::FunctionKind::Plain) << tag;
  EXPECT_EQ(r.lookup(L"traceSetFile")->kind, engine::FunctionKind::Error);
  EXPECT_EQ(r.lookup(L"test")->kind, engine::FunctionKind::Bool);
  EXPECT_EQ(r.lookup(L"for"), nullptr);
}

// The companion command's output deciphers to the password it was given.
TEST(CipherText, CompanionCommandOutputDeciphers) {
  std::wstring command = L"\"" UPKEEP_PASSWORD_EXE L"\" \"pa ss\"";
  SECURITY_ATTRIBUTES inherit{sizeof(inherit), nullptr, TRUE};
  HANDLE readEnd = nullptr, writeEnd = nullptr;
  ASSERT_TRUE(CreatePipe(&readEnd, &writeEnd, &inherit, 0));
  SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = writeEnd;
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process));
  CloseHandle(writeEnd);
  std::string output;
  char buffer[256];
  DWORD read = 0;
  while (ReadFile(readEnd, buffer, sizeof buffer, &read, nullptr) && read) output.append(buffer, read);
  WaitForSingleObject(process.hProcess, INFINITE);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  CloseHandle(readEnd);
  while (!output.empty() && (output.back() == '\n' || output.back() == '\r')) output.pop_back();
  const auto plain = engine::decipherHex(std::wstring(output.begin(), output.end()));
  ASSERT_TRUE(plain) << output;
  EXPECT_EQ(std::string(plain->c_str()), "pa ss");
}

}  // namespace
