#pragma once
// The seam through which tests make system calls fail on purpose. Every
// wrapper in platform/ that changes the disk asks injectedFault() first, so a
// failure path that only a broken disk would reach can still be tested.
#include <cstdint>

namespace platform {

enum class Call : uint8_t { Write, Flush, Close, Replace, Copy, Delete, CreateDirectory, Count };

// From the nth call of `call` on (1 = the next one), every call fails with
// `error`, as a full disk or a lost device keeps failing.
void failCall(Call call, unsigned nth, uint32_t error);
void clearFaults();

// 0 when the call may go ahead, else the error it must fail with. Counts the call.
uint32_t injectedFault(Call call);

}  // namespace platform
