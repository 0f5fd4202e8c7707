#include "platform/error_text.h"

#include <windows.h>

namespace platform {

std::wstring errorText(uint32_t code) { return std::to_wstring(static_cast<int32_t>(code)); }

uint32_t lastErrorOr(uint32_t fallback) {
  const DWORD code = GetLastError();
  return code != 0 ? code : fallback;
}

}  // namespace platform
