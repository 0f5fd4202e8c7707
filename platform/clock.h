#pragma once
// Time as the process sees it.
#include <cstdint>

namespace platform {

// Milliseconds since the system started (wraps after 49.7 days).
uint32_t tickCount();
void sleep(uint32_t milliseconds);

// A number for %random%: a cryptographic random value plus the tick count and
// the process id, summed in 32-bit arithmetic.
uint32_t randomNumber();

}  // namespace platform
