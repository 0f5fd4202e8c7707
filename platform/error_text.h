#pragma once
#include <cstdint>
#include <string>

namespace platform {

// The error text of a failed function: the Windows error code in decimal, read
// as a signed 32-bit number (so HRESULTs come out negative).
inline std::wstring errorText(uint32_t code) { return std::to_wstring(static_cast<int32_t>(code)); }

// GetLastError(), or the fallback when the failing call did not set one.
uint32_t lastErrorOr(uint32_t fallback);
// Sets GetLastError() to 0, so that a call that fails without setting one can be told apart.
void clearLastError();

}  // namespace platform
