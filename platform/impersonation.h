#pragma once
// Acting as another user: a logon, and the calling thread's impersonation of
// the user it logged on.
#include <cstdint>
#include <string>

#include "platform/owned.h"

namespace platform {

// Logs the user on interactively and makes the calling thread act as that
// user. On success `token` holds the logon's token, which must stay open while
// the impersonation lasts; on failure the logon's token is closed and `token`
// is left as it was. Returns 0 or the Windows error of the logon or of the
// impersonation.
uint32_t impersonateUser(const std::wstring& domain, const std::wstring& user, const std::wstring& password,
                         UniqueToken& token);

// Ends the calling thread's impersonation: 0 (also when there was none) or the
// Windows error.
uint32_t revertToSelf();

}  // namespace platform
