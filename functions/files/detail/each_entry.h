#pragma once
// The loop every multi-file operation shares: one step per listed entry; the
// first failure's code is kept, and the walk stops there unless errors are ignored.
#include <cstdint>

#include "platform/directory_listing.h"
#include "platform/errors.h"

namespace api::files {

// `step(list)` returns 0 or the Windows error code of that entry's failure.
// Returns the first error, else the listing's own when it could not start or
// broke off (no match at all is no error here), 0 when everything went well.
template <class Step>
uint32_t forEachEntry(platform::DirectoryListing& list, bool ignoreErrors, Step&& step) {
  uint32_t firstError = 0;
  for (; list.valid(); list.next()) {
    const uint32_t error = step(list);
    if (error == 0) continue;
    if (firstError == 0) firstError = error;
    if (!ignoreErrors) break;
  }
  if (firstError != 0 || list.error() == platform::kErrorFileNotFound) return firstError;
  return list.error();
}

}  // namespace api::files
