#pragma once
// The fault seam for wrappers whose failure is a value beside GetLastError()
// (false, nothing, an invalid handle), rather than a returned code.
#include "platform/fault.h"

namespace platform {

// injectedFault(call), with the error left for GetLastError() as the call
// itself would leave it: true when the call must fail.
bool failedOnPurpose(Call call);

}  // namespace platform
