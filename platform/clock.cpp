// rand_s is declared only when this comes before the first C runtime header.
#define _CRT_RAND_S
#include <stdlib.h>

#include "platform/clock.h"

#include <windows.h>

namespace platform {

uint32_t tickCount() { return GetTickCount(); }

void sleep(uint32_t milliseconds) { Sleep(milliseconds); }

uint32_t randomNumber() {
  unsigned int value = 0;
  rand_s(&value);
  return value + GetTickCount() + GetCurrentProcessId();
}

}  // namespace platform
