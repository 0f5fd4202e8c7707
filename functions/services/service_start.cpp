#include "functions/services/functions.h"
#include "platform/services.h"

namespace api::services {

namespace {
constexpr ServiceStateChange::Request start = {platform::ServiceAccess::Start, platform::ServiceState::Running,
                                               L"service already started", L"cannot start service",
                                               platform::startService};
}  // namespace

FunctionServiceStart::FunctionServiceStart() : ServiceStateChange(start) {}

const engine::TagDoc FunctionServiceStart::doc{
    L"Starts the service `name`, expanded when it runs, with one request; a service that runs already is left alone. With `waittime` in milliseconds (read when the script is prepared; default `0`: success once the request is accepted) it checks the service's state every 100 ms until it runs, and fails with `timeout` once `waittime`, rounded up to the next 100 ms, has passed; a negative `waittime` fails with `timeout` right after the request.",
    L"serviceStart function called for '%s', after wait for %d ms\nserviceStart cannot open scm\nserviceStart cannot open service\nserviceStart cannot query status\nserviceStart service already started\nserviceStart cannot start service\nserviceStart cannot query status2\nserviceStart function end with %s. err:'%s'",
    L"Error text: `timeout`, or the Windows code of the step that failed (logged before the end line): `5` access denied, `1060` no such service, `2` its program is missing, `1053` it did not answer as a service, `1058` it is disabled, `1056` it was still starting.",
    L"<serviceStart name=\"AppSvc\" waittime=\"30000\">\n  <onerror><trace value=\"AppSvc did not start: %error%\"/></onerror>\n</serviceStart>"};

}  // namespace api::services
