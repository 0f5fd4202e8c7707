#pragma once
// Deleting files with the fallbacks for files that are in use, and deleting
// directory trees on top of that.
#include <windows.h>

#include <cstdint>
#include <string>

namespace api::files {

struct DeleteOptions {
  bool ignoreErrors = false;
  bool renameIfFails = false;       // move a file that cannot go to "deleted_<tick>_<name>"
  bool afterRebootIfFails = false;  // and/or schedule its delete at the next restart
};

// Deletes directory\name (clearing read-only first). Returns 0 when the file
// is gone or was renamed out of the way, else a Windows error code. Without a
// rename, a delete scheduled for the restart still returns the delete's code.
uint32_t deleteFile(const std::wstring& directory, const std::wstring& name, DWORD attributes,
                    const DeleteOptions& options);

// Deletes everything below `directory`, then the directory itself when all
// went well. A missing directory is nothing to do. Returns false when a file
// could not be deleted; `firstError` keeps the first code.
bool deleteTree(const std::wstring& directory, const DeleteOptions& options, uint32_t& firstError);

}  // namespace api::files
