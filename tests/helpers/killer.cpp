// Ends a program from outside, as a deployment tool or a power cut would.
//   killer.exe <milliseconds | min-max | file:PATH> <command line>
// Starts the command line, waits the given time (a random time in min..max,
// or until PATH exists, at most 60 s), then ends the program with
// TerminateProcess. Prints "killed" when the program was still running,
// "ended <code>" when it had already ended by itself, and exits with 0; 2 when
// the arguments are wrong, 3 when the program cannot be started.
#define _CRT_RAND_S
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>

namespace {

DWORD randomIn(DWORD low, DWORD high) {
  unsigned value = 0;
  rand_s(&value);
  return high <= low ? low : low + value % (high - low + 1);
}

// Waits for the program to end, for at most the delay or until the file appears.
void waitBefore(HANDLE process, const wchar_t* when) {
  if (std::wcsncmp(when, L"file:", 5) == 0) {
    for (int waited = 0; waited < 60000 && GetFileAttributesW(when + 5) == INVALID_FILE_ATTRIBUTES; waited += 5)
      if (WaitForSingleObject(process, 5) == WAIT_OBJECT_0) return;
    return;
  }
  wchar_t* end = nullptr;
  const DWORD low = std::wcstoul(when, &end, 10);
  const DWORD high = *end == L'-' ? std::wcstoul(end + 1, nullptr, 10) : low;
  WaitForSingleObject(process, randomIn(low, high));
}

// The command line after the first two arguments, as written.
const wchar_t* commandAfterDelay(const wchar_t* line) {
  for (int skipped = 0; skipped < 2; ++skipped) {
    bool quoted = false;
    while (*line && (quoted || (*line != L' ' && *line != L'\t'))) quoted ^= *line++ == L'"';
    while (*line == L' ' || *line == L'\t') ++line;
  }
  return line;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc < 3) {
    std::fputs("usage: killer.exe <milliseconds | min-max | file:PATH> <command line>\n", stderr);
    return 2;
  }
  std::wstring command = commandAfterDelay(GetCommandLineW());
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started)) {
    std::fprintf(stderr, "cannot start the program: %lu\n", GetLastError());
    return 3;
  }
  CloseHandle(started.hThread);
  waitBefore(started.hProcess, argv[1]);
  // A program that ends by itself in the meantime keeps its own code.
  constexpr DWORD kKilled = 0xDEAD;
  TerminateProcess(started.hProcess, kKilled);
  WaitForSingleObject(started.hProcess, INFINITE);
  DWORD code = 0;
  GetExitCodeProcess(started.hProcess, &code);
  if (code == kKilled)
    std::printf("killed\n");
  else
    std::printf("ended %ld\n", static_cast<long>(code));
  CloseHandle(started.hProcess);
  return 0;
}
