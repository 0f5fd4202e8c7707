#include <windows.h>

#include <optional>
#include <string>

#include "engine/log.h"
#include "functions/processes/detail/impersonation.h"
#include "functions/processes/detail/password.h"
#include "functions/processes/functions.h"
#include "platform/impersonation.h"

namespace api::processes {

const Parameters& FunctionProcessImpersonateUser::parameters() {
  static const Parameters list = {engine::text<&FunctionProcessImpersonateUser::domain_>(L"domain", Need::NonEmpty),
                                  engine::text<&FunctionProcessImpersonateUser::user_>(L"username", Need::NonEmpty),
                                  engine::text<&FunctionProcessImpersonateUser::password_>(L"password", Need::NonEmpty),
                                  engine::flag<&FunctionProcessImpersonateUser::encrypted_>(L"encrypted")};
  return list;
}

// Logs the user on and makes the interpreter's thread act as that user until
// processRevertToSelf or the end of the script.
void FunctionProcessImpersonateUser::execute() {
  clearResult();
  const std::wstring domain = expand(domain_), user = expand(user_);
  std::optional<std::wstring> password = expand(password_);
  engine::log(L"processImpersonateUser function called for '%s\\%s'", domain.c_str(), user.c_str());
  if (encrypted_) password = detail::decipherPassword(*password);
  if (!password) {
    end(ERROR_DECRYPTION_FAILED);  // no logon is tried
    return;
  }
  platform::UniqueToken token;
  const uint32_t error = platform::impersonateUser(domain, user, *password, token);
  if (error == 0) detail::keepImpersonation(runtime(), std::move(token));
  end(error);
}

}  // namespace api::processes
