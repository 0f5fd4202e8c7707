#include "functions/services/functions.h"
#include "platform/services.h"

namespace api::services {

namespace {
constexpr ServiceStateChange::Request stop = {platform::ServiceAccess::Stop, platform::ServiceState::Stopped,
                                              L"service already stopped", L"cannot stop service",
                                              platform::stopService};
}  // namespace

FunctionServiceStop::FunctionServiceStop() : ServiceStateChange(stop) {}

const engine::TagDoc FunctionServiceStop::doc{
    L"Sends the service `name`, expanded when it runs, the stop request; a service that is stopped already is left alone. With `waittime` in milliseconds (as in `serviceStart`) it checks the service's state every 100 ms until it has stopped, and fails with `timeout` once `waittime`, rounded up to the next 100 ms, has passed.",
    L"serviceStop function called for '%s', after wait for %d ms\nserviceStop cannot open scm\nserviceStop cannot open service\nserviceStop cannot query status\nserviceStop service already stopped\nserviceStop cannot stop service\nserviceStop cannot query status2\nserviceStop function end with %s. err:'%s'",
    L"Error text: `timeout`, or the Windows code of the step that failed (logged before the end line): `5` access denied, `1060` no such service, `1051` running services depend on it, `1052` or `1061` it does not accept a stop now.",
    L"<serviceStop name=\"AppSvc\" waittime=\"30000\">\n  <onerrorspec err=\"timeout\"><processKill name=\"C:\\Program Files\\App\\svc.exe\"/></onerrorspec>\n</serviceStop>"};

}  // namespace api::services
