#include "engine/log.h"
#include "functions/base/functions.h"
#include "platform/clock.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"Sleep function called with exitcode %d"};

}  // namespace

const Parameters& FunctionSleep::parameters() {
  static const Parameters list = {engine::integer<&FunctionSleep::milliseconds_>(L"milisec")};
  return list;
}

void FunctionSleep::execute() {
  // "exitcode" for the milliseconds is the program's established wording,
  // which scripts and log readers match.
  engine::log(kStart, milliseconds_);
  engine::flushLogBeforeWait();
  // A negative time waits forever.
  platform::sleep(milliseconds_ < 0 ? platform::kWaitForever : static_cast<uint32_t>(milliseconds_));
}

const engine::TagDoc FunctionSleep::doc{
    L"Waits `milisec` milliseconds (one `l`; read as a number when the script is prepared); a negative number waits forever. Standard output is flushed before the wait; the log line calls the milliseconds `exitcode`.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<processKill name=\"app.exe\"/>\n<sleep milisec=\"2000\"/>"};

}  // namespace api::base
