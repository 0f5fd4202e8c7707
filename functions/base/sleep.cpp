#include "engine/log.h"
#include "functions/base/functions.h"
#include "platform/clock.h"

namespace api::base {

const Parameters& FunctionSleep::parameters() {
  static const Parameters list = {engine::integer<&FunctionSleep::milliseconds_>(L"milisec")};
  return list;
}

void FunctionSleep::execute() {
  // "exitcode" for the milliseconds is the program's established wording,
  // which scripts and log readers match.
  engine::log(L"Sleep function called with exitcode %d", milliseconds_);
  engine::flushLogBeforeWait();
  // A negative time waits forever.
  platform::sleep(milliseconds_ < 0 ? platform::kWaitForever : static_cast<uint32_t>(milliseconds_));
}

}  // namespace api::base
