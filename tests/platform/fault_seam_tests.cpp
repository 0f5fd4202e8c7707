// Every wrapper in platform/ fails through the fault seam: one row per fault
// point, each run with its kind armed, must see the injected code where the
// call's own failure would put it (the result, error(), or GetLastError()
// beside the failure value) and count the call. A new wrapper gets a row in
// the table below, in the block of its header; a kind with no row fails.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <functional>
#include <string>

#include "platform/directory_listing.h"
#include "platform/download.h"
#include "platform/environment.h"
#include "platform/fault.h"
#include "platform/file_system.h"
#include "platform/impersonation.h"
#include "platform/library.h"
#include "platform/system_library.h"
#include "platform/line_file.h"
#include "platform/output_file.h"
#include "platform/processes.h"
#include "platform/profile.h"
#include "platform/read_file.h"
#include "platform/registry.h"
#include "platform/services.h"
#include "platform/signature.h"
#include "platform/trace_file.h"

namespace {

using platform::Call;

constexpr uint32_t kCode = 7777;  // no call here fails with it on its own
const std::wstring kDir = L"fault_seam_unit";
const std::wstring kFile = kDir + L"\\file.txt";
const std::wstring kReadOnly = kDir + L"\\read-only.txt";
const std::wstring kKey = L"Software\\UpkeepTest-seam";

// The code a failed call left for GetLastError(), or 0 when it did not fail.
uint32_t lastErrorIf(bool failed) { return failed ? GetLastError() : 0; }

const platform::UniqueKey& openedKey() {
  static const platform::UniqueKey key = [] {
    HKEY created = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, kKey.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &created, nullptr);
    return platform::UniqueKey(created);
  }();
  return key;
}

struct Row {
  const char* wrapper;
  Call call;
  unsigned nth;                   // the call of that kind that fails (1: the wrapper's first)
  std::function<uint32_t()> run;  // the code observed, 0 when the wrapper went ahead
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.wrapper; }

const Row kRows[] = {
    // file_system.h
    {"pathExists", Call::Attributes, 1, [] { return lastErrorIf(!platform::pathExists(kFile)); }},
    {"isDirectory", Call::Attributes, 1, [] { return lastErrorIf(!platform::isDirectory(kDir)); }},
    {"checkDirectory", Call::Attributes, 1, [] { return platform::checkDirectory(kDir); }},
    {"clearReadOnly(path)", Call::Attributes, 1,
     [] {
       platform::clearReadOnly(kReadOnly);
       const uint32_t error = GetLastError();
       return GetFileAttributesW(kReadOnly.c_str()) & FILE_ATTRIBUTE_READONLY ? error : 0;
     }},
    {"clearReadOnly(path, attributes)", Call::AttributeWrite, 1,
     [] {
       platform::clearReadOnly(kReadOnly, GetFileAttributesW(kReadOnly.c_str()));
       const uint32_t error = GetLastError();
       return GetFileAttributesW(kReadOnly.c_str()) & FILE_ATTRIBUTE_READONLY ? error : 0;
     }},
    {"copyFile", Call::Copy, 1, [] { return platform::copyFile(kFile, kDir + L"\\copy.txt", false); }},
    {"moveFile", Call::Move, 1, [] { return platform::moveFile(kFile, kDir + L"\\moved.txt", platform::MoveFlags::None); }},
    {"deleteAtRestart", Call::Move, 1, [] { return platform::deleteAtRestart(kDir + L"\\none.txt"); }},
    {"deleteFile", Call::Delete, 1, [] { return platform::deleteFile(kFile, FILE_ATTRIBUTE_NORMAL); }},
    {"createDirectory", Call::CreateDirectory, 1, [] { return platform::createDirectory(kDir + L"\\new"); }},
    {"createDirectories", Call::CreateDirectory, 1,
     [] { return platform::createDirectories(kDir + L"\\new\\deeper"); }},
    // Its second try, after clearing the read-only attribute, is out of reach: Wine removes a
    // read-only directory at once.
    {"removeDirectory", Call::RemoveDirectory, 1, [] { return platform::removeDirectory(kDir); }},
    {"lastWriteTime", Call::List, 1, [] { return lastErrorIf(!platform::lastWriteTime(kFile)); }},
    {"sameLastWriteTime", Call::List, 1, [] { return lastErrorIf(!platform::sameLastWriteTime(kFile, kFile)); }},
    // directory_listing.h
    {"DirectoryListing", Call::List, 1,
     [] {
       const platform::DirectoryListing list(kDir + L"\\*");
       return list.valid() ? 0 : list.error();
     }},
    {"DirectoryListing::next", Call::List, 2,
     [] {
       platform::DirectoryListing list(kDir + L"\\*");
       list.next();
       return list.valid() ? 0 : list.error();
     }},
    // output_file.h
    {"OutputFile::open", Call::Create, 1,
     [] { return platform::OutputFile().open(kDir + L"\\out.txt", platform::OutputFile::Mode::Truncate); }},
    {"OutputFile::write", Call::Write, 1,
     [] {
       platform::OutputFile file;
       file.open(kDir + L"\\out.txt", platform::OutputFile::Mode::Truncate);
       return file.write("x");
     }},
    {"OutputFile::flush", Call::Flush, 1,
     [] {
       platform::OutputFile file;
       file.open(kDir + L"\\out.txt", platform::OutputFile::Mode::Truncate);
       return file.flush();
     }},
    {"OutputFile::close", Call::Close, 1,
     [] {
       platform::OutputFile file;
       file.open(kDir + L"\\out.txt", platform::OutputFile::Mode::Truncate);
       return file.close();
     }},
    {"replaceFile (the target's check)", Call::Attributes, 1, [] { return platform::replaceFile(kFile, "new"); }},
    {"replaceFile", Call::Replace, 1, [] { return platform::replaceFile(kFile, "new"); }},
    {"Replacement::create", Call::Create, 1, [] { return platform::Replacement().create(kFile); }},
    {"Replacement::putInPlace", Call::Replace, 1,
     [] {
       platform::Replacement replacement;
       replacement.create(kFile);
       replacement.file().close();
       return replacement.putInPlace();
     }},
    // line_file.h
    {"LineFile::open", Call::Create, 1, [] { return platform::LineFile().open(kDir + L"\\lines.txt"); }},
    {"LineFile::writeLine", Call::Write, 1,
     [] {
       platform::LineFile lines;
       lines.open(kDir + L"\\lines.txt");
       return lines.writeLine("line");
     }},
    // trace_file.h
    {"TraceFile::open", Call::Create, 1, [] { return platform::TraceFile().open(kDir + L"\\trace.txt"); }},
    {"TraceFile::writeLine", Call::TraceWrite, 1,
     [] {
       platform::TraceFile trace;
       trace.open(kDir + L"\\trace.txt");
       return trace.writeLine(L"line");
     }},
    // read_file.h
    {"readWholeFile (open)", Call::Open, 1,
     [] {
       std::vector<unsigned char> bytes;
       return platform::readWholeFile(kFile, bytes);
     }},
    {"readWholeFile", Call::Read, 1,
     [] {
       std::vector<unsigned char> bytes;
       return platform::readWholeFile(kFile, bytes);
     }},
    {"readTextFile (open)", Call::Open, 1,
     [] {
       std::string text;
       return lastErrorIf(!platform::readTextFile(kFile, text));
     }},
    {"readTextFile", Call::Read, 1,
     [] {
       std::string text;
       return lastErrorIf(!platform::readTextFile(kFile, text));
     }},
    {"openForReading", Call::Open, 1, [] { return lastErrorIf(!platform::openForReading(kFile)); }},
    {"readHead", Call::Read, 1,
     [] {
       const platform::UniqueFile file = platform::openForReading(kFile);
       return lastErrorIf(platform::readHead(file.get(), 4).empty());
     }},
    // environment.h
    {"expandEnvironment", Call::Environment, 1,
     [] { return lastErrorIf(!platform::expandEnvironment(L"%windir%")); }},
    {"longPathName", Call::Attributes, 1, [] { return lastErrorIf(!platform::longPathName(kFile)); }},
    // registry.h
    {"openKey", Call::RegistryOpen, 1,
     [] {
       platform::UniqueKey key;
       return platform::openKey(platform::RootKey::CurrentUser, kKey, platform::KeyAccess::Read, key);
     }},
    {"createKey", Call::RegistryKey, 1, [] { return platform::createKey(platform::RootKey::CurrentUser, kKey + L"\\new", false); }},
    {"deleteKey", Call::RegistryKey, 1, [] { return platform::deleteKey(platform::RootKey::CurrentUser, kKey); }},
    {"queryValue (size)", Call::RegistryQuery, 1,
     [] {
       platform::RegistryData data;
       return platform::queryValue(openedKey(), L"v", data);
     }},
    {"queryValue (data)", Call::RegistryQuery, 2,
     [] {
       platform::RegistryData data;
       return platform::queryValue(openedKey(), L"v", data);
     }},
    {"setValue", Call::RegistryWrite, 1, [] { return platform::setValue(openedKey(), L"v", platform::ValueType::Sz, {'x', 0, 0, 0}); }},
    {"deleteValue", Call::RegistryWrite, 1, [] { return platform::deleteValue(openedKey(), L"v"); }},
    {"subkeyNames", Call::RegistryEnum, 1,
     [] {
       std::vector<std::wstring> names;
       return platform::subkeyNames(openedKey(), names);
     }},
    {"valueNames", Call::RegistryEnum, 1,
     [] {
       std::vector<std::wstring> names;
       return platform::valueNames(openedKey(), names);
     }},
    // processes.h
    {"runProcess", Call::Process, 1, [] { return platform::runProcess(L"cmd.exe /c exit 0", L"", 0); }},
    {"runProcess (wait)", Call::Wait, 1, [] { return platform::runProcess(L"cmd.exe /c exit 0", L"", 10000); }},
    {"findProcesses", Call::Snapshot, 1,
     [] {
       std::vector<uint32_t> ids;
       return platform::findProcesses(L"fault_seam_tests.exe", ids);
     }},
    {"openProcessNamed", Call::Snapshot, 1,
     [] {
       uint32_t error = 0;
       const platform::UniqueProcess process =
           platform::openProcessNamed(GetCurrentProcessId(), L"platform_unit_tests.exe", platform::ProcessAccess::Wait, error);
       return process ? 0 : error;
     }},
    {"waitForAll", Call::Wait, 1,
     [] {
       const platform::UniqueProcess self[1];
       return platform::waitForAll(self, 0);
     }},
    // A missing fault point would end nothing: the handle is no process.
    {"terminateProcess", Call::Terminate, 1, [] { return platform::terminateProcess(platform::UniqueProcess()); }},
    {"setCurrentDirectory", Call::WorkingDirectory, 1, [] { return platform::setCurrentDirectory(L"."); }},
    // services.h: the handles are empty, so a missing fault point fails with 6 instead.
    {"openServiceManager", Call::ServiceManager, 1,
     [] {
       platform::UniqueServiceHandle manager;
       return platform::openServiceManager(platform::ManagerAccess::Connect, manager);
     }},
    {"openService", Call::ServiceOpen, 1,
     [] {
       platform::UniqueServiceHandle service;
       return platform::openService({}, L"upkeepNoSuchService", platform::ServiceAccess::QueryStatus, service);
     }},
    {"queryServiceState", Call::ServiceQuery, 1,
     [] {
       platform::ServiceState state{};
       return platform::queryServiceState({}, state);
     }},
    {"startService", Call::ServiceStart, 1, [] { return platform::startService({}); }},
    {"stopService", Call::ServiceControl, 1, [] { return platform::stopService({}); }},
    {"createService", Call::ServiceCreate, 1,
     [] { return platform::createService({}, platform::NewService()); }},
    {"deleteService", Call::ServiceDelete, 1, [] { return platform::deleteService({}); }},
    // profile.h: a read that fails gives the fallback, as a missing file does.
    {"profileString", Call::ProfileRead, 1,
     [] {
       return lastErrorIf(platform::profileString(kDir + L"\\x.ini", L"s", L"k", L"fallback  ") == L"fallback");
     }},
    {"writeProfileString", Call::ProfileWrite, 1,
     [] { return platform::writeProfileString(platform::fullPath(kDir + L"\\x.ini"), L"s", L"k", L"v"); }},
    // download.h: the code comes back as the HRESULT the service would give.
    {"downloadToFile", Call::Download, 1,
     [] {
       const int32_t result = platform::downloadToFile(L"http://127.0.0.1:1/x", kDir + L"\\download.txt");
       return result == HRESULT_FROM_WIN32(kCode) ? kCode : 0;
     }},
    // signature.h
    {"hasEmbeddedSignature", Call::Signature, 1, [] { return lastErrorIf(!platform::hasEmbeddedSignature(kFile)); }},
    {"isSignedInCatalog (open)", Call::Open, 1, [] { return lastErrorIf(!platform::isSignedInCatalog(kFile)); }},
    {"isSignedInCatalog", Call::Signature, 1, [] { return lastErrorIf(!platform::isSignedInCatalog(kFile)); }},
    // system_library.h
    {"systemExport", Call::Library, 1,
     [] {
       uint32_t error = 0;
       platform::systemExport(L"kernel32.dll", "GetTickCount", error);
       return error;
     }},
    // library.h
    {"callExport (load)", Call::Library, 1, [] { return platform::callExport(L"kernel32.dll", "GetTickCount", 0, L"").code; }},
    {"callExport (lookup)", Call::Library, 2,
     [] { return platform::callExport(L"kernel32.dll", "GetTickCount", 0, L"").code; }},
    {"callExport (thread)", Call::Library, 3,
     [] { return platform::callExport(L"kernel32.dll", "GetTickCount", 0, L"").code; }},
    // impersonation.h: Wine accepts any logon, so the second row reaches the impersonation.
    {"impersonateUser (logon)", Call::Logon, 1,
     [] {
       platform::UniqueToken token;
       return platform::impersonateUser(L".", L"nobody", L"secret", token);
     }},
    {"impersonateUser", Call::Logon, 2,
     [] {
       platform::UniqueToken token;
       return platform::impersonateUser(L".", L"nobody", L"secret", token);
     }},
    {"revertToSelf", Call::Logon, 1, [] { return platform::revertToSelf(); }},
};

class FaultSeam : public ::testing::TestWithParam<Row> {
 protected:
  static void SetUpTestSuite() {
    CreateDirectoryW(kDir.c_str(), nullptr);
    for (const std::wstring& path : {kFile, kReadOnly}) {
      HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
      WriteFile(file, "bytes", 5, nullptr, nullptr);
      CloseHandle(file);
    }
    SetFileAttributesW(kReadOnly.c_str(), FILE_ATTRIBUTE_READONLY);
    RegSetValueExW(static_cast<HKEY>(openedKey().get()), L"v", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"x"), 4);
  }
  static void TearDownTestSuite() {
    SetFileAttributesW(kReadOnly.c_str(), FILE_ATTRIBUTE_NORMAL);
    for (const wchar_t* name : {L"file.txt", L"read-only.txt", L"out.txt", L"trace.txt", L"lines.txt", L"x.ini"})
      DeleteFileW((kDir + L"\\" + name).c_str());
    RemoveDirectoryW(kDir.c_str());
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey.c_str());
  }
  void TearDown() override { platform::clearFaults(); }
};

TEST_P(FaultSeam, TheWrapperFailsWithTheInjectedCodeAndCountsTheCall) {
  const Row& row = GetParam();
  platform::clearFaults();
  platform::failCall(row.call, row.nth, kCode);
  SetLastError(0);
  EXPECT_EQ(row.run(), kCode) << row.wrapper << " armed with " << platform::callName(row.call);
  EXPECT_GE(platform::callCount(row.call), row.nth);
}

INSTANTIATE_TEST_SUITE_P(EveryWrapper, FaultSeam, ::testing::ValuesIn(kRows), [](const auto& info) {
  std::string name = std::to_string(info.index) + "_" + std::string(platform::callName(info.param.call));
  return name;
});

TEST(FaultSeamTable, EveryKindHasARowAndANameOfItsOwn) {
  for (size_t i = 0; i < static_cast<size_t>(Call::Count); ++i) {
    const auto call = static_cast<Call>(i);
    EXPECT_TRUE(std::any_of(std::begin(kRows), std::end(kRows), [&](const Row& row) { return row.call == call; }))
        << "no wrapper fails with " << platform::callName(call);
    EXPECT_EQ(platform::callNamed(platform::callName(call)), call) << platform::callName(call);
  }
}

}  // namespace
