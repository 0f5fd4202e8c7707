#include "platform/processes.h"

#include <windows.h>
#include <shlwapi.h>
#include <tlhelp32.h>

#include "platform/changes.h"
#include "platform/injected_error.h"

namespace platform {
namespace {

uint32_t outcome(BOOL succeeded) { return succeeded ? 0 : GetLastError(); }

// What a wait returned, with a failed wait (WAIT_FAILED) given as its error code.
uint32_t waitOutcome(DWORD result) { return result == WAIT_FAILED ? GetLastError() : result; }

bool sameIgnoringCase(const wchar_t* a, const wchar_t* b) {
  return CompareStringOrdinal(a, -1, b, -1, TRUE) == CSTR_EQUAL;
}

// The full path of the process's first module (its executable), or "" when
// its modules cannot be read (it is ending, or not ours to look into).
std::wstring firstModulePath(uint32_t id) {
  if (failedOnPurpose(Call::Snapshot)) return {};
  const UniqueSnapshot modules(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, id));
  if (!modules) return {};
  MODULEENTRY32W module{};
  module.dwSize = sizeof module;
  return Module32FirstW(modules.get(), &module) ? module.szExePath : std::wstring();
}

// A process whose executable name is not known yet (under Wine, one still
// starting from a Unix shell) matches nothing, so an empty name ends nothing.
bool matches(const PROCESSENTRY32W& process, const std::wstring& name) {
  if (process.szExeFile[0] == L'\0') return false;
  if (name.find(L'\\') == std::wstring::npos) return sameIgnoringCase(process.szExeFile, name.c_str());
  if (!sameIgnoringCase(process.szExeFile, PathFindFileNameW(name.c_str()))) return false;
  const std::wstring path = firstModulePath(process.th32ProcessID);
  return !path.empty() && sameIgnoringCase(path.c_str(), name.c_str());
}

}  // namespace

uint32_t runProcess(const std::wstring& commandLine, const std::wstring& directory, uint32_t waitMilliseconds) {
  if (commandLine.size() >= kCommandLineLimit) return ERROR_FILENAME_EXCED_RANGE;
  // CreateProcessW may write into the line, so it gets a copy it can change.
  std::wstring line(kCommandLineCapacity, L'\0');
  line.replace(0, commandLine.size(), commandLine);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (const uint32_t error = injectedFault(Call::Process)) return error;
  if (whatIf())
    return wouldChange(Call::Process, L"run " + commandLine + (directory.empty() ? L"" : L" in " + directory));
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                      directory.empty() ? nullptr : directory.c_str(), &startup, &started))
    return GetLastError();
  noteChange(0);
  const UniqueProcess process(started.hProcess);
  const UniqueThread thread(started.hThread);
  if (waitMilliseconds == 0) return 0;
  if (const uint32_t error = injectedFault(Call::Wait)) return error;
  return waitOutcome(WaitForSingleObject(process.get(), waitMilliseconds));
}

uint32_t findProcesses(const std::wstring& name, std::vector<uint32_t>& ids) {
  if (const uint32_t error = injectedFault(Call::Snapshot)) return error;
  const UniqueSnapshot snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!snapshot) return GetLastError();
  PROCESSENTRY32W process{};
  process.dwSize = sizeof process;
  if (!Process32FirstW(snapshot.get(), &process)) {
    const uint32_t error = GetLastError();
    return error == ERROR_NO_MORE_FILES ? 0 : error;
  }
  do {
    if (matches(process, name)) ids.push_back(process.th32ProcessID);
  } while (Process32NextW(snapshot.get(), &process));
  return 0;
}

// Whether the process behind `id` still runs the executable `name`, asked
// while the caller holds a handle to it, so the id cannot change owner during
// the question. When it cannot be asked, the snapshot's answer stands.
bool stillNamed(uint32_t id, const std::wstring& name) {
  if (failedOnPurpose(Call::Snapshot)) return true;
  const UniqueProcess query(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
  if (!query) return true;
  std::wstring path(kCommandLineCapacity, L'\0');
  DWORD size = static_cast<DWORD>(path.size());
  if (failedOnPurpose(Call::Snapshot)) return true;
  if (!QueryFullProcessImageNameW(query.get(), 0, path.data(), &size)) return true;
  path.resize(size);
  if (name.find(L'\\') != std::wstring::npos) return sameIgnoringCase(path.c_str(), name.c_str());
  return sameIgnoringCase(PathFindFileNameW(path.c_str()), name.c_str());
}

UniqueProcess openProcessNamed(uint32_t id, const std::wstring& name, ProcessAccess access, uint32_t& error) {
  UniqueProcess process(failedOnPurpose(Call::Snapshot)
                            ? nullptr
                            : OpenProcess(access == ProcessAccess::Wait ? SYNCHRONIZE : PROCESS_TERMINATE, FALSE, id));
  error = process ? 0 : GetLastError();
  nameHandle(process.get(), name + L" (process " + std::to_wstring(id) + L")");
  if (!process || stillNamed(id, name)) return process;
  // The process ended after the search and its id went to another one.
  error = ERROR_INVALID_PARAMETER;
  return {};
}

uint32_t waitForAll(std::span<const UniqueProcess> processes, uint32_t milliseconds) {
  if (const uint32_t error = injectedFault(Call::Wait)) return error;
  std::vector<HANDLE> handles;
  for (const UniqueProcess& process : processes) handles.push_back(process.get());
  const DWORD count = static_cast<DWORD>(handles.size());
  const DWORD result = WaitForMultipleObjects(count, handles.data(), TRUE, milliseconds);
  return result < count ? 0 : waitOutcome(result);
}

uint32_t terminateProcess(const UniqueProcess& process, uint32_t exitCode) {
  if (const uint32_t error = injectedFault(Call::Terminate)) return error;
  if (whatIf()) return wouldChange(Call::Terminate, L"end " + handleName(process.get()));
  return noteChange(outcome(TerminateProcess(process.get(), exitCode)));
}

uint32_t setCurrentDirectory(const std::wstring& path) {
  if (const uint32_t error = injectedFault(Call::WorkingDirectory)) return error;
  return outcome(SetCurrentDirectoryW(path.c_str()));
}

}  // namespace platform
