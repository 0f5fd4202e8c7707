#include "functions/services/functions.h"
#include "platform/services.h"

namespace api::services {

namespace {
constexpr ServiceStateChange::Request stop = {SERVICE_STOP, SERVICE_STOPPED, L"service already stopped",
                                              L"cannot stop service", platform::stopService};
}  // namespace

FunctionServiceStop::FunctionServiceStop() : ServiceStateChange(stop) {}

}  // namespace api::services
