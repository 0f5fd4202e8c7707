#pragma once
// How many calls that change the machine have succeeded: file writes, copies,
// moves and deletes, directories, the registry, INI files, services, programs
// started or ended, exports called, downloads. The engine compares the count
// before and after a function to tell whether the function changed anything.
#include <cstdint>

namespace platform {

// Counts one change when `error` is 0; returns `error`.
uint32_t noteChange(uint32_t error);
uint64_t changesMade();

}  // namespace platform
