#include "platform/library.h"

#include <windows.h>

#include <atomic>
#include <csignal>
#include <cstdlib>

#include "platform/changes.h"
#include "platform/fault.h"
#include "platform/owned.h"
#include "platform/path.h"

namespace platform {
namespace {

using EntryPoint = uint32_t (*)(int32_t, const wchar_t*);

// Enough for any reasonable export; a runaway recursion stops here.
constexpr SIZE_T kStackSize = 8 << 20;
// The exit code Windows gives a thread or process that called abort().
constexpr DWORD kAbortCode = 0x40000015;

struct GuardedCall {
  EntryPoint entry;
  int32_t integer;
  const wchar_t* text;
  uint32_t result = 0;
  bool returned = false;
};

// The thread running the export: an exception nothing handles, or abort(),
// ends that thread alone.
std::atomic<DWORD> guardedThread{0};
LPTOP_LEVEL_EXCEPTION_FILTER outerFilter = nullptr;

LONG WINAPI onUnhandledException(EXCEPTION_POINTERS* info) {
  if (GetCurrentThreadId() == guardedThread) ExitThread(info->ExceptionRecord->ExceptionCode);
  return outerFilter ? outerFilter(info) : EXCEPTION_CONTINUE_SEARCH;
}

void onAbort(int) {
  if (GetCurrentThreadId() == guardedThread) ExitThread(kAbortCode);
  _exit(3);  // abort() on another thread ends the process, as it would unguarded
}

DWORD WINAPI runCall(void* parameter) {
  GuardedCall& call = *static_cast<GuardedCall*>(parameter);
  try {
    call.result = call.entry(call.integer, call.text);
    call.returned = true;
  } catch (...) {}
  return 0;
}

// The thread's own impersonation, if any, so the worker acts as the same user.
void shareImpersonation(HANDLE worker) {
  UniqueToken token;
  if (OpenThreadToken(GetCurrentThread(), TOKEN_IMPERSONATE, TRUE, token.put())) SetThreadToken(&worker, token.get());
}

// Runs the export to its end, returned or not: 0, or why no thread could run it.
uint32_t runGuarded(GuardedCall& call) {
  DWORD id = 0;
  if (const uint32_t error = injectedFault(Call::Library)) return error;
  const UniqueThread worker(
      CreateThread(nullptr, kStackSize, runCall, &call, CREATE_SUSPENDED | STACK_SIZE_PARAM_IS_A_RESERVATION, &id));
  if (!worker) return GetLastError();
  shareImpersonation(worker.get());
  guardedThread = id;
  outerFilter = SetUnhandledExceptionFilter(onUnhandledException);
  const auto outerAbort = std::signal(SIGABRT, onAbort);
  ResumeThread(worker.get());
  WaitForSingleObject(worker.get(), INFINITE);
  std::signal(SIGABRT, outerAbort);
  SetUnhandledExceptionFilter(outerFilter);
  guardedThread = 0;
  return 0;
}

// The library a script names, with the libraries it needs from its own folder
// or the system folder. The program searches the system folder only for names
// (restrictLibrarySearch), so a name that is not a full path is first looked
// for as Windows looks for files: the program's folder, the current directory,
// the system folders, PATH.
HMODULE loadScriptLibrary(const std::wstring& library) {
  std::wstring path = library;
  if (!isFullPath(path)) {
    wchar_t found[MAX_PATH];
    const DWORD length = SearchPathW(nullptr, library.c_str(), nullptr, MAX_PATH, found, nullptr);
    if (length == 0 || length >= MAX_PATH) {
      SetLastError(ERROR_MOD_NOT_FOUND);
      return nullptr;
    }
    path.assign(found, length);
  }
  return LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}

}  // namespace

ExportCall callExport(const std::wstring& library, const std::string& name, int32_t integer, const std::wstring& text) {
  if (const uint32_t error = injectedFault(Call::Library)) return {error, false};
  // Loading a library runs its own code: a what-if run loads none.
  if (whatIf()) return {wouldChange(Call::Library, L"call " + std::wstring(name.begin(), name.end()) + L" in " + library), false};
  const UniqueModule module(loadScriptLibrary(library));
  if (!module) return {GetLastError(), false};
  if (const uint32_t error = injectedFault(Call::Library)) return {error, false};
  const FARPROC address = GetProcAddress(static_cast<HMODULE>(module.get()), name.c_str());
  if (!address) return {GetLastError(), false};
  GuardedCall call{reinterpret_cast<EntryPoint>(reinterpret_cast<void*>(address)), integer, text.c_str()};
  if (const uint32_t error = runGuarded(call)) return {error, false};
  noteChange(0);  // whatever the export did, it ran
  return {call.result, !call.returned};
}

}  // namespace platform
