#include "engine/log_lines.h"
#include "functions/services/functions.h"
#include "platform/services.h"

namespace api::services {

namespace {

constexpr engine::LogLine kAlready{L"%s service already stopped"};
constexpr engine::LogLine kRefused{L"%s cannot stop service"};

const engine::TagDoc doc{
    L"Sends the service `name`, expanded when it runs, the stop request; a service that is stopped already is left alone. With `waittime` in milliseconds (as in `serviceStart`) it checks the service's state every 100 ms until it has stopped, and fails with `timeout` once `waittime`, rounded up to the next 100 ms, has passed.",
    {kStateChangeStart.as(L"serviceStop"), kCannotOpenScm.as(L"serviceStop"), kCannotOpenService.as(L"serviceStop"),
     kCannotQueryStatus.as(L"serviceStop"), kAlready.as(L"serviceStop"), kRefused.as(L"serviceStop"),
     kCannotQueryStatusAgain.as(L"serviceStop"), engine::kErrorEnd.as(L"serviceStop")},
    L"Error text: `timeout`, or the Windows code of the step that failed (logged before the end line): `5` access denied, `1060` no such service, `1051` running services depend on it, `1052` or `1061` it does not accept a stop now.",
    L"<serviceStop name=\"AppSvc\" waittime=\"30000\">\n  <onerrorspec err=\"timeout\"><processKill name=\"C:\\Program Files\\App\\svc.exe\"/></onerrorspec>\n</serviceStop>"};

}  // namespace

const ServiceStateChange::Request kServiceStop = {platform::ServiceAccess::Stop, platform::ServiceState::Stopped, kAlready, kRefused, platform::stopService, doc};

}  // namespace api::services
