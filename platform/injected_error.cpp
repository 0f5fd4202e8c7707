#include "platform/injected_error.h"

#include <windows.h>

namespace platform {

bool failedOnPurpose(Call call) {
  const uint32_t error = injectedFault(call);
  if (error != 0) SetLastError(error);
  return error != 0;
}

}  // namespace platform
