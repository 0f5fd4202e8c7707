#include <cstdint>

#include "engine/log.h"
#include "functions/services/functions.h"
#include "platform/changes.h"
#include "platform/clock.h"
#include "platform/errors.h"
#include "platform/services.h"

namespace api::services {

const Parameters& ServiceStateChange::parameters() {
  static const Parameters list =
      engine::joined({engine::integer<&ServiceStateChange::waitTime_>(L"waittime", Need::Optional, L"0")},
                     ServiceFunction::parameters());
  return list;
}

void ServiceStateChange::execute() {
  clearResult();
  const std::wstring name = expand(name_);
  engine::log(kStateChangeStart, this->name(), name.c_str(), waitTime_);
  endWith(change(name));
}

uint32_t ServiceStateChange::change(const std::wstring& name) const {
  UniqueServiceHandle manager, service;
  if (const uint32_t error = platform::openServiceManager(platform::ManagerAccess::Enumerate, manager))
    return failedTo(error, kCannotOpenScm);
  if (const uint32_t error =
          platform::openService(manager, name, platform::ServiceAccess::QueryStatus | request_.access, service))
    return failedTo(error, kCannotOpenService);
  platform::ServiceState state = platform::ServiceState::Unknown;
  if (const uint32_t error = platform::queryServiceState(service, state)) return failedTo(error, kCannotQueryStatus);
  if (state == request_.awaitedState) {
    engine::log(request_.already, this->name());
    return 0;
  }
  if (const uint32_t error = request_.send(service)) return failedTo(error, request_.refused);
  // A what-if run sent nothing, so there is no change to wait for.
  if (waitTime_ == 0 || platform::whatIf()) return 0;
  engine::flushLogBeforeWait();
  // The state known before the request is not the awaited one, so at least
  // one round is made; the wait ends at `waittime` rounded up to 100 ms.
  for (int64_t remaining = waitTime_; state != request_.awaitedState; remaining -= 100) {
    if (remaining < 1) return platform::kErrorWaitTimeout;
    platform::sleep(100);
    if (const uint32_t error = platform::queryServiceState(service, state))
      return failedTo(error, kCannotQueryStatusAgain);
  }
  return 0;
}

}  // namespace api::services
