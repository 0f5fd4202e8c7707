#include "engine/log_lines.h"
#include "functions/services/functions.h"
#include "platform/services.h"

namespace api::services {

namespace {

constexpr engine::LogLine kAlready{L"%s service already started"};
constexpr engine::LogLine kRefused{L"%s cannot start service"};

const engine::TagDoc doc{
    L"Starts the service `name`, expanded when it runs, with one request; a service that runs already is left alone. With `waittime` in milliseconds (read when the script is prepared; default `0`: success once the request is accepted) it checks the service's state every 100 ms until it runs, and fails with `timeout` once `waittime`, rounded up to the next 100 ms, has passed; a negative `waittime` fails with `timeout` right after the request.",
    {kStateChangeStart.as(L"serviceStart"), kCannotOpenScm.as(L"serviceStart"), kCannotOpenService.as(L"serviceStart"),
     kCannotQueryStatus.as(L"serviceStart"), kAlready.as(L"serviceStart"), kRefused.as(L"serviceStart"),
     kCannotQueryStatusAgain.as(L"serviceStart"), engine::kErrorEnd.as(L"serviceStart")},
    L"Error text: `timeout`, or the Windows code of the step that failed (logged before the end line): `5` access denied, `1060` no such service, `2` its program is missing, `1053` it did not answer as a service, `1058` it is disabled, `1056` it was still starting.",
    L"<serviceStart name=\"AppSvc\" waittime=\"30000\">\n  <onerror><trace value=\"AppSvc did not start: %error%\"/></onerror>\n</serviceStart>"};

}  // namespace

const ServiceStateChange::Request kServiceStart = {platform::ServiceAccess::Start, platform::ServiceState::Running, kAlready, kRefused,
                                               platform::startService, doc};

}  // namespace api::services
