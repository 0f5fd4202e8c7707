#include "functions/files/directory_copier.h"

#include <windows.h>

#include "engine/log.h"
#include "functions/files/last_write_time.h"
#include "platform/file_system.h"

namespace api::files {
namespace {

void keepFirst(uint32_t& firstError, uint32_t error) {
  if (firstError == 0) firstError = error;
}

// Prepares an existing destination for an overwriting copy; false when the
// file is to be skipped because it did not change.
bool prepareOverwrite(const std::wstring& source, const FILETIME& sourceTime, const std::wstring& target,
                      const CopyOptions& options) {
  const auto targetTime = lastWriteTime(target);
  if (!targetTime) return true;
  if (options.diffLWTOnly && CompareFileTime(&sourceTime, &*targetTime) == 0) {
    engine::log(L"File '%s' skipped due to identical last write time", source.c_str());
    return false;
  }
  const DWORD attributes = GetFileAttributesW(target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY))
    SetFileAttributesW(target.c_str(), attributes & ~FILE_ATTRIBUTE_READONLY);
  return true;
}

}  // namespace

bool copyDirectory(const std::wstring& source, const std::wstring& dest, const CopyOptions& options,
                   uint32_t& firstError) {
  const DWORD sourceAttributes = GetFileAttributesW(source.c_str());
  if (sourceAttributes == INVALID_FILE_ATTRIBUTES || !(sourceAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
    keepFirst(firstError, ERROR_PATH_NOT_FOUND);
    return false;
  }
  bool result = true;
  bool destReady = false;  // created once, when its first file is copied
  for (platform::DirectoryListing list(platform::joinPath(source, L"*")); list.valid(); list.next()) {
    if (list.isDots()) continue;
    const std::wstring from = platform::joinPath(source, list.name());
    if (options.filter && !options.filter->accepts(from)) continue;
    const std::wstring to = platform::joinPath(dest, list.name());
    if (list.isDirectory()) {
      if (!copyDirectory(from, to, options, firstError)) {
        result = false;
        if (!options.ignoreErrors) break;
      }
      continue;
    }
    if (!options.failIfExists && !prepareOverwrite(from, list.entry().ftLastWriteTime, to, options)) continue;
    if (!destReady) destReady = platform::createDirectories(dest);
    const bool copied = CopyFileW(from.c_str(), to.c_str(), options.failIfExists);
    const DWORD error = GetLastError();
    engine::log(L"File '%s' copied to '%s' with %s (%d)", from.c_str(), to.c_str(), copied ? L"SUCCESS" : L"ERROR",
                static_cast<int>(error));
    if (!copied) {
      result = false;
      keepFirst(firstError, error);
      if (!options.ignoreErrors) break;
    }
  }
  return result;
}

}  // namespace api::files
