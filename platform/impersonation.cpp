#include "platform/impersonation.h"

#include <windows.h>

#include "platform/error_text.h"

namespace platform {

uint32_t impersonateUser(const std::wstring& domain, const std::wstring& user, const std::wstring& password,
                         UniqueToken& token) {
  UniqueToken logon;
  if (!LogonUserW(user.c_str(), domain.c_str(), password.c_str(), LOGON32_LOGON_INTERACTIVE, LOGON32_PROVIDER_DEFAULT,
                  logon.put()))
    return GetLastError();
  if (!ImpersonateLoggedOnUser(logon.get())) return GetLastError();
  token = std::move(logon);
  return 0;
}

uint32_t revertToSelf() {
  clearLastError();
  return RevertToSelf() ? 0 : lastErrorOr(0);
}

}  // namespace platform
