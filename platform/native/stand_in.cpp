// The system calls of the families, for the native build. There is no system
// behind them: every call that would read or change the machine answers 120
// (kErrorNotImplemented), a query finds nothing, and no handle is ever opened.
// So the families' own logic builds and runs under the sanitizers, and a
// function that reaches the system ends on that one documented code.
#include "platform/directory_listing.h"
#include "platform/download.h"
#include "platform/error_text.h"
#include "platform/errors.h"
#include "platform/file_system.h"
#include "platform/impersonation.h"
#include "platform/library.h"
#include "platform/output_file.h"
#include "platform/owned.h"
#include "platform/processes.h"
#include "platform/profile.h"
#include "platform/read_file.h"
#include "platform/registry.h"
#include "platform/services.h"
#include "platform/signature.h"

namespace platform {
namespace {

constexpr uint32_t kAbsent = kErrorNotImplemented;
// The last error a stand-in call left, as GetLastError() would hold it.
thread_local uint32_t lastError = 0;

}  // namespace

uint32_t lastErrorOr(uint32_t fallback) { return lastError != 0 ? lastError : fallback; }
void clearLastError() { lastError = 0; }

// Nothing is ever opened, so there is nothing to close.
void KernelHandleTraits::close(Handle) {}
void FindHandleTraits::close(Handle) {}
void RegistryKeyTraits::close(Handle) {}
void ServiceHandleTraits::close(Handle) {}
void ModuleTraits::close(Handle) {}
void MappedViewTraits::close(Handle) {}

// Files and directories: no path is a directory, no listing starts.
struct DirectoryListing::Entry {};
DirectoryListing::DirectoryListing(const std::wstring&) : error_(kAbsent) {}
DirectoryListing::~DirectoryListing() = default;
const wchar_t* DirectoryListing::name() const { return L""; }
uint32_t DirectoryListing::attributes() const { return 0; }
bool DirectoryListing::isDirectory() const { return false; }
bool DirectoryListing::isReadOnly() const { return false; }
bool DirectoryListing::isLink() const { return false; }
bool DirectoryListing::isDots() const { return false; }
uint64_t DirectoryListing::lastWriteTime() const { return 0; }
void DirectoryListing::next() {}

std::wstring fullPath(const std::wstring& path) { return path; }
std::wstring extendedPath(const std::wstring& path) { return path; }
bool samePath(const std::wstring& a, const std::wstring& b) { return a == b; }
bool isDirectory(const std::wstring&) { return false; }
uint32_t checkDirectory(const std::wstring&) { return kAbsent; }
PathState inspectPath(const std::wstring&) { return {kAbsent}; }
bool sameRoot(const std::wstring&, const std::wstring&) { return false; }
void clearReadOnly(const std::wstring&) {}
void clearReadOnly(const std::wstring&, uint32_t) {}
uint32_t copyFile(const std::wstring&, const std::wstring&, bool) { return kAbsent; }
uint32_t moveFile(const std::wstring&, const std::wstring&, MoveFlags) { return kAbsent; }
uint32_t deleteAtRestart(const std::wstring&) { return kAbsent; }
uint32_t deleteFile(const std::wstring&, uint32_t) { return kAbsent; }
uint32_t createDirectory(const std::wstring&) { return kAbsent; }
uint32_t createDirectories(const std::wstring&) { return kAbsent; }
uint32_t removeDirectory(const std::wstring&) { return kAbsent; }
std::optional<uint64_t> lastWriteTime(const std::wstring&) { return std::nullopt; }
bool sameLastWriteTime(const std::wstring&, const std::wstring&) { return false; }

uint32_t OutputFile::open(const std::wstring&, Mode mode) {
  append_ = mode == Mode::Append;
  return kAbsent;
}
uint32_t OutputFile::write(std::string_view) { return kAbsent; }
uint32_t OutputFile::flush() { return kAbsent; }
uint32_t OutputFile::close() { return 0; }
uint32_t replaceFile(const std::wstring&, std::string_view) { return kAbsent; }
Replacement::~Replacement() = default;
uint32_t Replacement::create(const std::wstring&) { return kAbsent; }
uint32_t Replacement::putInPlace() { return kAbsent; }

uint32_t readWholeFile(const std::wstring&, std::vector<unsigned char>&) { return kAbsent; }
uint32_t readTerminated(const std::wstring&, TerminatedFile&) { return kAbsent; }
bool readTextFile(const std::wstring&, std::string&) { return false; }
UniqueFile openForReading(const std::wstring&) {
  lastError = kAbsent;
  return nullptr;
}
// No file is ever open for it to read.
std::string readHead(std::FILE*, size_t) { return {}; }

// INI files: every value is missing.
std::wstring profileString(const std::wstring&, const std::wstring&, const std::wstring&,
                           const std::wstring& fallback) {
  return fallback;
}
uint32_t writeProfileString(const std::wstring&, const std::wstring&, const std::wstring&, const std::wstring&) {
  return kAbsent;
}

// The HRESULT of a Windows error: HRESULT_FROM_WIN32(120).
int32_t downloadToFile(const std::wstring&, const std::wstring&) { return static_cast<int32_t>(0x80070000u | kAbsent); }
bool hasEmbeddedSignature(const std::wstring&) { return false; }
bool isSignedInCatalog(const std::wstring&) { return false; }
ExportCall callExport(const std::wstring&, const std::string&, int32_t, const std::wstring&) {
  return {kAbsent, false};
}

// Processes: none runs, so there is none to find; there is no impersonation to end.
uint32_t runProcess(const std::wstring&, const std::wstring&, uint32_t) { return kAbsent; }
uint32_t findProcesses(const std::wstring&, std::vector<uint32_t>&) { return kAbsent; }
UniqueProcess openProcessNamed(uint32_t, const std::wstring&, ProcessAccess, uint32_t& error) {
  error = kAbsent;
  return {};
}
uint32_t waitForAll(std::span<const UniqueProcess>, uint32_t) { return kAbsent; }
uint32_t terminateProcess(const UniqueProcess&, uint32_t) { return kAbsent; }
uint32_t setCurrentDirectory(const std::wstring&) { return kAbsent; }
uint32_t impersonateUser(const std::wstring&, const std::wstring&, const std::wstring&, UniqueToken&) {
  return kAbsent;
}
uint32_t revertToSelf() { return 0; }

uint32_t openServiceManager(ManagerAccess, UniqueServiceHandle& manager) {
  manager.reset();
  return kAbsent;
}
uint32_t openService(const UniqueServiceHandle&, const std::wstring&, ServiceAccess, UniqueServiceHandle& service) {
  service.reset();
  return kAbsent;
}
uint32_t queryServiceState(const UniqueServiceHandle&, ServiceState&) { return kAbsent; }
uint32_t startService(const UniqueServiceHandle&) { return kAbsent; }
uint32_t stopService(const UniqueServiceHandle&) { return kAbsent; }
uint32_t deleteService(const UniqueServiceHandle&) { return kAbsent; }
uint32_t createService(const UniqueServiceHandle&, const NewService&) { return kAbsent; }

uint32_t openKey(KeyParent, const std::wstring&, KeyAccess, UniqueKey& key) {
  key.reset();
  return kAbsent;
}
uint32_t createKey(KeyParent, const std::wstring&, bool) { return kAbsent; }
uint32_t deleteKey(KeyParent, const std::wstring&) { return kAbsent; }
uint32_t queryValue(const UniqueKey&, const std::wstring&, RegistryData&) { return kAbsent; }
uint32_t setValue(const UniqueKey&, const std::wstring&, ValueType, const std::vector<uint8_t>&) { return kAbsent; }
uint32_t deleteValue(const UniqueKey&, const std::wstring&) { return kAbsent; }
uint32_t subkeyNames(const UniqueKey&, std::vector<std::wstring>&) { return kAbsent; }
uint32_t valueNames(const UniqueKey&, std::vector<std::wstring>&) { return kAbsent; }

}  // namespace platform
