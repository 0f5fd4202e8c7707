#pragma once
// Deleting files with the fallbacks for files that are in use, and deleting
// directory trees on top of that.
#include <cstdint>
#include <string>

namespace api::files {

struct DeleteOptions {
  bool ignoreErrors = false;
  bool renameIfFails = false;       // move a file that cannot go to "deleted_<tick>_<name>"
  bool afterRebootIfFails = false;  // and/or schedule its delete at the next restart
};

// Deletes the file at `path` (clearing read-only first; `attributes` as a
// listing gave them). Returns 0 when the file is gone or was renamed out of
// the way, else a Windows error code. A name that ends in a dot or a space
// is reached only through an extended path (platform::extendedPath). Without a rename, a delete scheduled for
// the restart still returns the delete's code.
uint32_t deleteFile(const std::wstring& path, uint32_t attributes, const DeleteOptions& options);

// Deletes everything below `directory`, then the directory itself when all
// went well. A missing directory is nothing to do. Returns the first error
// code of a file or directory that could not be deleted, 0 when none is left.
uint32_t deleteTree(const std::wstring& path, const DeleteOptions& options);

}  // namespace api::files
