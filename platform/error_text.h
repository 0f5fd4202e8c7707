#pragma once
#include <cstdint>
#include <string>

namespace platform {

// The error text of a failed function: the Windows error code in decimal, read
// as a signed 32-bit number (so HRESULTs come out negative).
std::wstring errorText(uint32_t code);

// GetLastError(), or the fallback when the failing call did not set one.
uint32_t lastErrorOr(uint32_t fallback);

}  // namespace platform
