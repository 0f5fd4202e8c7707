// A child program for the process functions' cases.
//   child.exe [<milliseconds> [<exit code> [<go file> | -]]]
// Beside itself it writes "<exe>.<pid>.start" (its command line and working
// directory, one per line, UTF-8) when it starts, waits for the go file to
// exist (at most 60 s) when one is named, sleeps, writes "<exe>.<pid>.end"
// when it ends normally, and exits with the code.
#include <windows.h>

#include <cwchar>
#include <string>

namespace {

void writeUtf8(const std::wstring& path, const std::wstring& text) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), size, nullptr, nullptr);
  DWORD written = 0;
  WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(file);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  wchar_t exe[MAX_PATH * 4];
  const DWORD length = GetModuleFileNameW(nullptr, exe, MAX_PATH * 4);
  std::wstring marks(exe, length);
  if (marks.size() > 4) marks.resize(marks.size() - 4);  // without ".exe"
  marks += L'.' + std::to_wstring(GetCurrentProcessId());

  wchar_t directory[MAX_PATH * 4];
  const DWORD directoryLength = GetCurrentDirectoryW(MAX_PATH * 4, directory);
  writeUtf8(marks + L".start",
            std::wstring(GetCommandLineW()) + L"\n" + std::wstring(directory, directoryLength) + L"\n");
  const bool go = argc > 3 && std::wcscmp(argv[3], L"-") != 0;
  for (int waited = 0; go && waited < 60000 && GetFileAttributesW(argv[3]) == INVALID_FILE_ATTRIBUTES; waited += 20)
    Sleep(20);
  Sleep(argc > 1 ? static_cast<DWORD>(std::wcstoul(argv[1], nullptr, 10)) : 0);
  writeUtf8(marks + L".end", L"");
  return argc > 2 ? static_cast<int>(std::wcstol(argv[2], nullptr, 10)) : 0;
}
