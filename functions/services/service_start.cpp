#include "functions/services/functions.h"
#include "platform/services.h"

namespace api::services {

namespace {
constexpr ServiceStateChange::Request start = {SERVICE_START, SERVICE_RUNNING, L"service already started",
                                               L"cannot start service", platform::startService};
}  // namespace

FunctionServiceStart::FunctionServiceStart() : ServiceStateChange(start) {}

}  // namespace api::services
