// A library whose exports processEntrypoint calls: well-behaved ones and ones
// that crash in every way a guard must survive. Each has the signature
//   uint32_t f(int32_t number, const wchar_t* text)
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#define EXPORT extern "C" __declspec(dllexport)

EXPORT uint32_t returnZero(int32_t, const wchar_t*) { return 0; }

EXPORT uint32_t returnFive(int32_t, const wchar_t*) { return 5; }

// Writes "<number>;<text>" (UTF-8) to echo.txt in the current directory.
EXPORT uint32_t echoArguments(int32_t number, const wchar_t* text) {
  const std::wstring line = std::to_wstring(number) + L";" + text;
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()), nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()), bytes.data(), size, nullptr, nullptr);
  const HANDLE file =
      CreateFileW(L"echo.txt", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError();
  DWORD written = 0;
  const BOOL ok = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(file);
  return ok ? 0 : GetLastError();
}

EXPORT uint32_t accessViolation(int32_t, const wchar_t*) {
  *static_cast<volatile int*>(nullptr) = 1;
  return 0;
}

EXPORT uint32_t divideByZero(int32_t number, const wchar_t*) {
  volatile int zero = 0;
  return static_cast<uint32_t>(number / zero);
}

// Recurses until the stack runs out; the volatile buffer keeps each frame.
EXPORT uint32_t overflowStack(int32_t number, const wchar_t* text) {
  volatile char frame[4096];
  frame[0] = static_cast<char>(number);
  return text ? overflowStack(number + 1, text) + frame[0] : 0;
}

EXPORT uint32_t throwException(int32_t, const wchar_t*) { throw std::runtime_error("thrown by the export"); }

EXPORT uint32_t callAbort(int32_t, const wchar_t*) { std::abort(); }

// 0 when the calling thread acts as another user (has a thread token), else the error.
EXPORT uint32_t threadToken(int32_t, const wchar_t*) {
  HANDLE token = nullptr;
  if (!OpenThreadToken(GetCurrentThread(), TOKEN_QUERY, TRUE, &token)) return GetLastError();
  CloseHandle(token);
  return 0;
}
