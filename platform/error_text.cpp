#include "platform/error_text.h"

#include <windows.h>

namespace platform {

uint32_t lastErrorOr(uint32_t fallback) {
  const DWORD code = GetLastError();
  return code != 0 ? code : fallback;
}

void clearLastError() { SetLastError(0); }

}  // namespace platform
