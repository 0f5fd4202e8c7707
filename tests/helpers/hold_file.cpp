// Holds a file open (or just runs, so that its own exe is in use) until the
// file "held.stop" appears in the current directory, or for 60 seconds.
//   hold_file.exe [<file> [none|rw|delete|read]]
// Opens the file for reading and writing, sharing what the second argument names (default
// none); "read" opens it for reading only and shares reading, as a program that has loaded it.
// Creates "held.ready" once the file (or directory) is open and removes it on exit.
#include <windows.h>

#include <cwchar>

int wmain(int argc, wchar_t** argv) {
  HANDLE held = INVALID_HANDLE_VALUE;
  if (argc > 1) {
    DWORD share = 0;
    DWORD access = GENERIC_READ | GENERIC_WRITE;
    if (argc > 2 && std::wcscmp(argv[2], L"rw") == 0) share = FILE_SHARE_READ | FILE_SHARE_WRITE;
    if (argc > 2 && std::wcscmp(argv[2], L"delete") == 0) share = FILE_SHARE_DELETE;
    if (argc > 2 && std::wcscmp(argv[2], L"read") == 0) {
      share = FILE_SHARE_READ;
      access = GENERIC_READ;
    }
    held = CreateFileW(argv[1], access, share, nullptr, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (held == INVALID_HANDLE_VALUE) return static_cast<int>(GetLastError());
  }
  HANDLE ready = CreateFileW(L"held.ready", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (ready != INVALID_HANDLE_VALUE) CloseHandle(ready);
  for (int waited = 0; waited < 60000; waited += 50) {
    if (GetFileAttributesW(L"held.stop") != INVALID_FILE_ATTRIBUTES) break;
    Sleep(50);
  }
  if (held != INVALID_HANDLE_VALUE) CloseHandle(held);
  DeleteFileW(L"held.ready");
  return 0;
}
