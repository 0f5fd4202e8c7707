#pragma once
// The recursive directory copy behind dirCopyRec.
#include <cstdint>
#include <string>

#include "engine/log_line.h"
#include "functions/files/detail/path_filter.h"

namespace api::files {

// The lines of each file the copy skips or copies.
constexpr engine::LogLine kSkippedSameTime{L"File '%s' skipped due to identical last write time"};
constexpr engine::LogLine kCopiedWith{L"File '%s' copied to '%s' with %s (%d)"};

struct CopyOptions {
  bool failIfExists = true;
  bool ignoreErrors = false;
  bool diffLWTOnly = false;
  const PathFilter* filter = nullptr;
};

// Copies the files below `source` that the filter accepts into the same
// places below `dest`, creating directories as files need them. A `dest`
// inside `source` is not copied into itself: it is left out. Returns the
// first Windows error code (3 when `source` is no directory), 0 when all went well.
uint32_t copyDirectory(const std::wstring& source, const std::wstring& dest, const CopyOptions& options);

}  // namespace api::files
