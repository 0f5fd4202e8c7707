#pragma once
// The loop every multi-file operation shares: one step per listed entry; the
// first failure's code is kept, and the walk stops there unless errors are ignored.
#include <cstdint>

#include "platform/directory_listing.h"

namespace api::files {

// `step(list)` returns 0 or the Windows error code of that entry's failure.
// Returns the first error, 0 when every step went well.
template <class Step>
uint32_t forEachEntry(platform::DirectoryListing& list, bool ignoreErrors, Step&& step) {
  uint32_t firstError = 0;
  for (; list.valid(); list.next()) {
    const uint32_t error = step(list);
    if (error == 0) continue;
    if (firstError == 0) firstError = error;
    if (!ignoreErrors) break;
  }
  return firstError;
}

}  // namespace api::files
