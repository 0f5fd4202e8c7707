#include "platform/environment.h"

#include <windows.h>

#include <cwchar>

#include "platform/injected_error.h"

namespace platform {
namespace {

// Calls a Win32 "fill this buffer" function, retrying once with the size it
// asks for; nothing when it fails or keeps asking for more.
template <class Fill>
std::optional<std::wstring> withGrowingBuffer(size_t initial, Fill fill) {
  std::wstring buffer(initial, L'\0');
  DWORD length = fill(buffer.data(), static_cast<DWORD>(buffer.size()));
  if (length > buffer.size()) {
    buffer.assign(length, L'\0');
    length = fill(buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length > buffer.size()) return std::nullopt;
  }
  if (length == 0) return std::nullopt;
  buffer.resize(length);
  return buffer;
}

}  // namespace

std::optional<std::wstring> expandEnvironment(const std::wstring& text) {
  if (failedOnPurpose(Call::Environment)) return std::nullopt;
  auto expanded = withGrowingBuffer(
      1024, [&](wchar_t* buffer, DWORD size) { return ExpandEnvironmentStringsW(text.c_str(), buffer, size); });
  if (expanded && !expanded->empty() && expanded->back() == L'\0') expanded->pop_back();  // counted by the call
  return expanded;
}

std::optional<std::vector<std::wstring>> environmentNames() {
  if (failedOnPurpose(Call::Environment)) return std::nullopt;
  wchar_t* block = GetEnvironmentStringsW();
  if (!block) return std::nullopt;
  // "name=value\0" entries up to an empty one; a name may start with '='.
  std::vector<std::wstring> names;
  for (const wchar_t* entry = block; *entry; entry += std::wcslen(entry) + 1) {
    const wchar_t* equals = std::wcschr(entry + 1, L'=');
    names.emplace_back(entry, equals ? equals : entry + std::wcslen(entry));
  }
  FreeEnvironmentStringsW(block);
  return names;
}

std::optional<std::wstring> longPathName(const std::wstring& path) {
  if (failedOnPurpose(Call::Attributes)) return std::nullopt;
  return withGrowingBuffer(
      1024, [&](wchar_t* buffer, DWORD size) { return GetLongPathNameW(path.c_str(), buffer, size); });
}

std::wstring modulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length < path.size()) return path.substr(0, length);
    path.resize(path.size() * 2);
  }
}

std::wstring currentDirectory() {
  return withGrowingBuffer(MAX_PATH, [](wchar_t* buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); })
      .value_or(std::wstring());
}

uint32_t processId() { return GetCurrentProcessId(); }

OsVersion osVersion() {
  using RtlGetVersionFn = LONG(WINAPI*)(OSVERSIONINFOEXW*);
  OSVERSIONINFOEXW info{};
  info.dwOSVersionInfoSize = sizeof(info);
  HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
  auto rtlGetVersion =
      ntdll ? reinterpret_cast<RtlGetVersionFn>(reinterpret_cast<void*>(GetProcAddress(ntdll, "RtlGetVersion")))
            : nullptr;
  if (rtlGetVersion) rtlGetVersion(&info);
  return OsVersion{info.dwMajorVersion, info.dwMinorVersion, info.wProductType};
}

}  // namespace platform
