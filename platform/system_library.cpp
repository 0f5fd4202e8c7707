#include "platform/system_library.h"

#include <windows.h>

#include "platform/fault.h"

namespace platform {

// Start-up's own setting, made before any fault can be armed: no fault point.
void restrictLibrarySearch() {
  // Looked up, not imported: Windows 7 has it only with its 2011 loader update.
  using SetDefaultDirectories = BOOL(WINAPI*)(DWORD);
  const auto set = reinterpret_cast<SetDefaultDirectories>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories")));
  if (set && set(LOAD_LIBRARY_SEARCH_SYSTEM32)) return;
  SetDllDirectoryW(L"");  // at least no current directory
}

void* systemExport(const wchar_t* library, const char* name, uint32_t& error) {
  if (const uint32_t injected = injectedFault(Call::Library)) {
    error = injected;
    return nullptr;
  }
  // A library already loaded only gains a reference: it is never freed.
  const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (!module) {
    error = GetLastError();
    return nullptr;
  }
  void* const address = reinterpret_cast<void*>(GetProcAddress(module, name));
  if (!address) error = GetLastError();
  return address;
}

}  // namespace platform
