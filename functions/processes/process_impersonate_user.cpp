#include <optional>
#include <string>

#include "engine/log.h"
#include "functions/processes/detail/impersonation.h"
#include "functions/processes/detail/password.h"
#include "functions/processes/functions.h"
#include "platform/errors.h"
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
    end(platform::kErrorDecryptionFailed);  // no logon is tried
    return;
  }
  platform::UniqueToken token;
  const uint32_t error = platform::impersonateUser(domain, user, *password, token);
  if (error == 0) detail::keepImpersonation(runtime(), std::move(token));
  end(error);
}

const engine::TagDoc FunctionProcessImpersonateUser::doc{
    L"Logs `domain`\\`username` on with `password` (all expanded when it runs; `domain=\".\"` is the local machine) and makes the interpreter act as that user until `processRevertToSelf` or the end of the script: files, the registry, services, INI files and `processEntrypoint` exports are reached with that user's rights, but `processRun` still starts programs as the interpreter's own user. The logon is interactive, so the account needs the right to log on locally; with `encrypted=\"true\"` `password` is the hexadecimal text `upkeep-password.exe` prints. A second impersonation replaces the first.",
    L"processImpersonateUser function called for '%s\\%s'\nprocessImpersonateUser function end with %s. err:'%s'",
    L"Error text: `1326` a wrong user name or password, `1385` the logon type is not granted, `6001` an `encrypted` password that is not hexadecimal or holds no byte (no logon is tried), or another Windows code of the logon.",
    L"<processImpersonateUser domain=\".\" username=\"update\" password=\"518DA6610C1C0B17F53D0327FC205E03\" encrypted=\"true\">\n  <onerror><trace value=\"cannot act as update: %error%\"/><exit code=\"5\"/></onerror>\n</processImpersonateUser>"};

}  // namespace api::processes
