#include "platform/impersonation.h"

#include <windows.h>

#include "platform/error_text.h"
#include "platform/fault.h"

namespace platform {

uint32_t impersonateUser(const std::wstring& domain, const std::wstring& user, const std::wstring& password,
                         UniqueToken& token) {
  UniqueToken logon;
  if (const uint32_t error = injectedFault(Call::Logon)) return error;
  if (!LogonUserW(user.c_str(), domain.c_str(), password.c_str(), LOGON32_LOGON_INTERACTIVE, LOGON32_PROVIDER_DEFAULT,
                  logon.put()))
    return GetLastError();
  if (const uint32_t error = injectedFault(Call::Logon)) return error;  // the logon's token closes on the way out
  if (!ImpersonateLoggedOnUser(logon.get())) return GetLastError();
  token = std::move(logon);
  return 0;
}

uint32_t revertToSelf() {
  if (const uint32_t error = injectedFault(Call::Logon)) return error;
  clearLastError();
  return RevertToSelf() ? 0 : lastErrorOr(0);
}

}  // namespace platform
