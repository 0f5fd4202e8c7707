#include <windows.h>

#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

bool FunctionSleep::readAttributes() { return readInt(L"milisec", milliseconds_); }

void FunctionSleep::execute() {
  // "exitcode" for the milliseconds is the program's established wording,
  // which scripts and log readers match.
  engine::log(L"Sleep function called with exitcode %d", milliseconds_);
  Sleep(static_cast<DWORD>(milliseconds_));
}

}  // namespace api::base
