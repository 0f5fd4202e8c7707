// Every wrapper in platform/ fails through the fault seam: each row arms its
// kinds in turn (kind, nth call of that kind) and must see the injected code
// where the call's own failure would put it (the result, error(), or
// GetLastError() beside the failure value), and the call counted. A new
// wrapper gets a row in the block of its header; a kind with no row fails.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

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
using Mode = platform::OutputFile::Mode;
using Faults = std::vector<std::pair<Call, unsigned>>;

constexpr uint32_t kCode = 7777;  // no call here fails with it on its own
const std::wstring kDir = L"fault_seam_unit";
const std::wstring kFile = kDir + L"\\file.txt";
const std::wstring kOut = kDir + L"\\out.txt";
const std::wstring kReadOnly = kDir + L"\\read-only.txt";
const std::wstring kKey = L"Software\\UpkeepTest-seam";
const auto kUser = platform::RootKey::CurrentUser;

// The code a failed call left for GetLastError(), or 0 when it did not fail.
uint32_t lastErrorIf(bool failed) { return failed ? GetLastError() : 0; }

// The code left by a clearReadOnly that kept the attribute, else 0.
uint32_t stillReadOnly() {
  const uint32_t error = GetLastError();
  return GetFileAttributesW(kReadOnly.c_str()) & FILE_ATTRIBUTE_READONLY ? error : 0;
}

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
  Faults faults;                  // each armed alone: the kind, and which of its calls fails (1: the first)
  std::function<uint32_t()> run;  // the code observed, 0 when the wrapper went ahead
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.wrapper; }

const Row kRows[] = {
    // file_system.h
    {"pathExists", {{Call::Attributes, 1}}, [] { return lastErrorIf(!platform::pathExists(kFile)); }},
    {"isDirectory", {{Call::Attributes, 1}}, [] { return lastErrorIf(!platform::isDirectory(kDir)); }},
    {"checkDirectory", {{Call::Attributes, 1}}, [] { return platform::checkDirectory(kDir); }},
    {"clearReadOnly(path)", {{Call::Attributes, 1}},
     [] { return platform::clearReadOnly(kReadOnly), stillReadOnly(); }},
    {"clearReadOnly(path, attributes)", {{Call::AttributeWrite, 1}},
     [] { return platform::clearReadOnly(kReadOnly, GetFileAttributesW(kReadOnly.c_str())), stillReadOnly(); }},
    {"copyFile", {{Call::Copy, 1}}, [] { return platform::copyFile(kFile, kDir + L"\\copy.txt", false); }},
    {"moveFile", {{Call::Move, 1}},
     [] { return platform::moveFile(kFile, kDir + L"\\m.txt", platform::MoveFlags::None); }},
    {"deleteAtRestart", {{Call::Move, 1}}, [] { return platform::deleteAtRestart(kDir + L"\\none.txt"); }},
    {"deleteFile", {{Call::Delete, 1}}, [] { return platform::deleteFile(kFile, FILE_ATTRIBUTE_NORMAL); }},
    {"createDirectory", {{Call::CreateDirectory, 1}}, [] { return platform::createDirectory(kDir + L"\\new"); }},
    {"createDirectories", {{Call::CreateDirectory, 1}}, [] { return platform::createDirectories(kDir + L"\\new\\d"); }},
    // Its second try, after clearing the read-only attribute, is out of reach: Wine removes a
    // read-only directory at once.
    {"removeDirectory", {{Call::RemoveDirectory, 1}}, [] { return platform::removeDirectory(kDir); }},
    {"lastWriteTime", {{Call::List, 1}}, [] { return lastErrorIf(!platform::lastWriteTime(kFile)); }},
    {"sameLastWriteTime", {{Call::List, 1}}, [] { return lastErrorIf(!platform::sameLastWriteTime(kFile, kFile)); }},
    // directory_listing.h: the start, then the step
    {"DirectoryListing", {{Call::List, 1}, {Call::List, 2}},
     [] {
       platform::DirectoryListing list(kDir + L"\\*");
       if (list.valid()) list.next();
       return list.valid() ? 0 : list.error();
     }},
    // output_file.h
    {"OutputFile", {{Call::Create, 1}, {Call::Write, 1}, {Call::Flush, 1}, {Call::Close, 1}},
     [] {
       platform::OutputFile file;
       uint32_t error = file.open(kOut, Mode::Truncate);
       if (!error) error = file.write("x");
       if (!error) error = file.flush();
       return error ? error : file.close();
     }},
    {"replaceFile", {{Call::Attributes, 1}, {Call::Replace, 1}}, [] { return platform::replaceFile(kFile, "new"); }},
    {"Replacement", {{Call::Create, 1}, {Call::Replace, 1}},
     [] {
       platform::Replacement replacement;
       if (const uint32_t error = replacement.create(kFile)) return error;
       replacement.file().close();
       return replacement.putInPlace();
     }},
    // line_file.h
    {"LineFile", {{Call::Create, 1}, {Call::Write, 1}},
     [] { platform::LineFile f; const uint32_t e = f.open(kDir + L"\\lines.txt"); return e ? e : f.writeLine("x"); }},
    // trace_file.h
    {"TraceFile", {{Call::Create, 1}, {Call::TraceWrite, 1}},
     [] { platform::TraceFile f; const uint32_t e = f.open(kDir + L"\\trace.txt"); return e ? e : f.writeLine(L"x"); }},
    // read_file.h
    {"readWholeFile", {{Call::Open, 1}, {Call::Read, 1}},
     [] { std::vector<unsigned char> bytes; return platform::readWholeFile(kFile, bytes); }},
    {"readTextFile", {{Call::Open, 1}, {Call::Read, 1}},
     [] { std::string text; return lastErrorIf(!platform::readTextFile(kFile, text)); }},
    {"openForReading, readHead", {{Call::Open, 1}, {Call::Read, 1}},
     [] {
       const auto file = platform::openForReading(kFile);
       return lastErrorIf(!file || platform::readHead(file.get(), 4).empty());
     }},
    // environment.h
    {"expandEnvironment", {{Call::Environment, 1}},
     [] { return lastErrorIf(!platform::expandEnvironment(L"%windir%")); }},
    {"longPathName", {{Call::Attributes, 1}}, [] { return lastErrorIf(!platform::longPathName(kFile)); }},
    // registry.h
    {"openKey", {{Call::RegistryOpen, 1}},
     [] { platform::UniqueKey key; return platform::openKey(kUser, kKey, platform::KeyAccess::Read, key); }},
    {"createKey", {{Call::RegistryKey, 1}}, [] { return platform::createKey(kUser, kKey + L"\\new", false); }},
    {"deleteKey", {{Call::RegistryKey, 1}}, [] { return platform::deleteKey(kUser, kKey); }},
    {"queryValue (size, data)", {{Call::RegistryQuery, 1}, {Call::RegistryQuery, 2}},
     [] { platform::RegistryData data; return platform::queryValue(openedKey(), L"v", data); }},
    {"setValue", {{Call::RegistryWrite, 1}},
     [] { return platform::setValue(openedKey(), L"v", platform::ValueType::Sz, {'x', 0, 0, 0}); }},
    {"deleteValue", {{Call::RegistryWrite, 1}}, [] { return platform::deleteValue(openedKey(), L"v"); }},
    {"subkeyNames", {{Call::RegistryEnum, 1}},
     [] { std::vector<std::wstring> names; return platform::subkeyNames(openedKey(), names); }},
    {"valueNames", {{Call::RegistryEnum, 1}},
     [] { std::vector<std::wstring> names; return platform::valueNames(openedKey(), names); }},
    // processes.h
    {"runProcess (start, wait)", {{Call::Process, 1}, {Call::Wait, 1}},
     [] { return platform::runProcess(L"cmd.exe /c exit 0", L"", 10000); }},
    {"findProcesses", {{Call::Snapshot, 1}},
     [] { std::vector<uint32_t> ids; return platform::findProcesses(L"fault_seam_tests.exe", ids); }},
    {"openProcessNamed", {{Call::Snapshot, 1}},
     [] {
       uint32_t error = 0;
       const platform::UniqueProcess process = platform::openProcessNamed(
           GetCurrentProcessId(), L"platform_unit_tests.exe", platform::ProcessAccess::Wait, error);
       return process ? 0 : error;
     }},
    {"waitForAll", {{Call::Wait, 1}},
     [] { const platform::UniqueProcess self[1]; return platform::waitForAll(self, 0); }},
    // A missing fault point would end nothing: the handle is no process.
    {"terminateProcess", {{Call::Terminate, 1}}, [] { return platform::terminateProcess(platform::UniqueProcess()); }},
    {"setCurrentDirectory", {{Call::WorkingDirectory, 1}}, [] { return platform::setCurrentDirectory(L"."); }},
    // services.h: the handles are empty, so a missing fault point fails with 6 instead.
    {"openServiceManager", {{Call::ServiceManager, 1}},
     [] { platform::UniqueServiceHandle h; return platform::openServiceManager(platform::ManagerAccess::Connect, h); }},
    {"openService", {{Call::ServiceOpen, 1}},
     [] {
       platform::UniqueServiceHandle h;
       return platform::openService({}, L"upkeepNoSuchService", platform::ServiceAccess::QueryStatus, h);
     }},
    {"queryServiceState", {{Call::ServiceQuery, 1}},
     [] { platform::ServiceState state{}; return platform::queryServiceState({}, state); }},
    {"startService", {{Call::ServiceStart, 1}}, [] { return platform::startService({}); }},
    {"stopService", {{Call::ServiceControl, 1}}, [] { return platform::stopService({}); }},
    {"createService", {{Call::ServiceCreate, 1}}, [] { return platform::createService({}, platform::NewService()); }},
    {"deleteService", {{Call::ServiceDelete, 1}}, [] { return platform::deleteService({}); }},
    // profile.h: a read that fails gives the fallback, as a missing file does.
    {"profileString", {{Call::ProfileRead, 1}},
     [] { return lastErrorIf(platform::profileString(kDir + L"\\x.ini", L"s", L"k", L"fallback  ") == L"fallback"); }},
    {"writeProfileString", {{Call::ProfileWrite, 1}},
     [] { return platform::writeProfileString(platform::fullPath(kDir + L"\\x.ini"), L"s", L"k", L"v"); }},
    // download.h: the code comes back as the HRESULT the service would give.
    {"downloadToFile", {{Call::Download, 1}},
     [] {
       const int32_t result = platform::downloadToFile(L"http://127.0.0.1:1/x", kDir + L"\\download.txt");
       return result == HRESULT_FROM_WIN32(kCode) ? kCode : 0;
     }},
    // signature.h
    {"hasEmbeddedSignature", {{Call::Signature, 1}},
     [] { return lastErrorIf(!platform::hasEmbeddedSignature(kFile)); }},
    {"isSignedInCatalog", {{Call::Open, 1}, {Call::Signature, 1}},
     [] { return lastErrorIf(!platform::isSignedInCatalog(kFile)); }},
    // system_library.h
    {"systemExport", {{Call::Library, 1}},
     [] { uint32_t error = 0; platform::systemExport(L"kernel32.dll", "GetTickCount", error); return error; }},
    // library.h: the load, the lookup, the thread
    {"callExport", {{Call::Library, 1}, {Call::Library, 2}, {Call::Library, 3}},
     [] { return platform::callExport(L"kernel32.dll", "GetTickCount", 0, L"").code; }},
    // impersonation.h: Wine accepts any logon, so the second call reaches the impersonation.
    {"impersonateUser", {{Call::Logon, 1}, {Call::Logon, 2}},
     [] { platform::UniqueToken token; return platform::impersonateUser(L".", L"nobody", L"secret", token); }},
    {"revertToSelf", {{Call::Logon, 1}}, [] { return platform::revertToSelf(); }},
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
  for (const auto& [call, nth] : GetParam().faults) {
    platform::clearFaults();
    platform::failCall(call, nth, kCode);
    SetLastError(0);
    EXPECT_EQ(GetParam().run(), kCode) << "armed with " << platform::callName(call) << ":" << nth;
    EXPECT_GE(platform::callCount(call), nth) << platform::callName(call);
  }
}

INSTANTIATE_TEST_SUITE_P(EveryWrapper, FaultSeam, ::testing::ValuesIn(kRows), [](const auto& info) {
  return std::to_string(info.index) + "_" + std::string(platform::callName(info.param.faults.front().first));
});

TEST(FaultSeamTable, EveryKindHasARowAndANameOfItsOwn) {
  for (size_t i = 0; i < static_cast<size_t>(Call::Count); ++i) {
    const auto call = static_cast<Call>(i);
    EXPECT_TRUE(std::any_of(std::begin(kRows), std::end(kRows), [&](const Row& row) {
      return std::any_of(row.faults.begin(), row.faults.end(), [&](const auto& fault) { return fault.first == call; });
    })) << "no wrapper fails with " << platform::callName(call);
    EXPECT_EQ(platform::callNamed(platform::callName(call)), call) << platform::callName(call);
  }
}

}  // namespace
