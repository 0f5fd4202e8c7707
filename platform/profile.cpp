#include "platform/profile.h"

#include <windows.h>

#include <algorithm>

#include "platform/error_text.h"
#include "platform/changes.h"
#include "platform/injected_error.h"

namespace platform {

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
  clearLastError();
  if (WritePrivateProfileStringW(section.c_str(), key.c_str(), value.c_str(), path.c_str())) return noteChange(0);
  return noteChange(lastErrorOr(0));
}

}  // namespace platform
