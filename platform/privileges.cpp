#include "platform/privileges.h"

#include <windows.h>

#include "platform/owned.h"

namespace platform {

void enablePrivileges(std::initializer_list<const wchar_t*> names) {
  UniqueHandle token;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, token.put())) return;
  for (const wchar_t* name : names) {
    TOKEN_PRIVILEGES privileges{};
    if (!LookupPrivilegeValueW(nullptr, name, &privileges.Privileges[0].Luid)) continue;
    privileges.PrivilegeCount = 1;
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    AdjustTokenPrivileges(token.get(), FALSE, &privileges, 0, nullptr, nullptr);
  }
}

}  // namespace platform
