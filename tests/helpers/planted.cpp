// A library planted under the name of a system library: loading it writes
// "<its own path>.loaded" beside it, so a test sees that a program took it.
#include <windows.h>

#include <string>

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  wchar_t path[MAX_PATH];
  const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
  if (length == 0 || length == MAX_PATH) return TRUE;
  const std::wstring marker = std::wstring(path, length) + L".loaded";
  const HANDLE file = CreateFileW(marker.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
  return TRUE;
}
