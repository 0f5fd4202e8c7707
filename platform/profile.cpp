#include "platform/profile.h"

#include <windows.h>

#include <algorithm>
#include <optional>

#include "platform/changes.h"
#include "platform/error_text.h"
#include "platform/fault.h"
#include "platform/file_system.h"
#include "platform/injected_error.h"
#include "platform/output_file.h"
#include "platform/owned.h"

namespace platform {
namespace {

// The file the profile calls use: a bare name is in the Windows directory.
std::wstring profileFile(const std::wstring& path) {
  if (path.find_first_of(L"\\/") != std::wstring::npos) return fullPath(path);
  wchar_t directory[MAX_PATH];
  const UINT length = GetWindowsDirectoryW(directory, MAX_PATH);
  return length == 0 || length >= MAX_PATH ? path : std::wstring(directory, length) + L"\\" + path;
}

// A copy of the file beside it (an empty one when it is missing), which the
// write may change without touching the file itself.
std::optional<std::wstring> copyBeside(const std::wstring& file) {
  const bool exists = GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
  for (unsigned attempt = 1; attempt <= 100; ++attempt) {
    const std::wstring temporary = siblingName(file, attempt);
    const bool made = exists ? CopyFileW(file.c_str(), temporary.c_str(), TRUE)
                             : UniqueHandle(CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                                        FILE_ATTRIBUTE_NORMAL, nullptr)).valid();
    if (made) return temporary;
    if (GetLastError() != ERROR_FILE_EXISTS) return std::nullopt;
  }
  return std::nullopt;
}

// The value written into a copy of the file that then replaces it in one
// step, so that a run ended half-way leaves the file as it was: 0, or an
// injected error. Nothing when the system refused a step: the direct write
// then meets the refusal and gives its code.
std::optional<uint32_t> writeBeside(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                                    const std::wstring& value) {
  const std::wstring file = profileFile(path);
  if (const uint32_t error = injectedFault(Call::Copy)) return error;
  const std::optional<std::wstring> temporary = copyBeside(file);
  if (!temporary) return std::nullopt;
  if (!WritePrivateProfileStringW(section.c_str(), key.c_str(), value.c_str(), temporary->c_str())) {
    removeTemporary(*temporary);
    return std::nullopt;
  }
  return moveOver(*temporary, file, true);
}

}  // namespace

std::wstring profileString(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                           const std::wstring& fallback) {
  // As a file that cannot be read: the fallback without its trailing blanks.
  if (failedOnPurpose(Call::ProfileRead)) return fallback.substr(0, fallback.find_last_not_of(L' ') + 1);
  constexpr DWORD kBuffer = 10240;
  std::wstring buffer(kBuffer, L'\0');
  const DWORD length =
      GetPrivateProfileStringW(section.c_str(), key.c_str(), fallback.c_str(), buffer.data(), kBuffer, path.c_str());
  buffer.resize(std::min<DWORD>(length, kBuffer - 1));
  return buffer.substr(0, buffer.find(L'\0'));
}

uint32_t writeProfileString(const std::wstring& path, const std::wstring& section, const std::wstring& key,
                            const std::wstring& value) {
  if (const uint32_t error = injectedFault(Call::ProfileWrite)) return error;
  if (whatIf()) return wouldChange(Call::ProfileWrite, L"set [" + section + L"] " + key + L"=" + value + L" in " + path);
  if (const std::optional<uint32_t> written = writeBeside(path, section, key, value)) return noteChange(*written);
  clearLastError();
  if (WritePrivateProfileStringW(section.c_str(), key.c_str(), value.c_str(), path.c_str())) return noteChange(0);
  return noteChange(lastErrorOr(0));
}

}  // namespace platform
