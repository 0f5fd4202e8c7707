#include "functions/files/detail/directory_copier.h"

#include "engine/log.h"
#include "functions/files/detail/each_entry.h"
#include "platform/errors.h"
#include "platform/file_system.h"
#include "platform/path.h"

namespace api::files {
namespace {

// Prepares an existing destination for an overwriting copy; false when the
// file is to be skipped because it did not change.
bool prepareOverwrite(const std::wstring& source, uint64_t sourceTime, const std::wstring& target,
                      const CopyOptions& options) {
  const auto targetTime = platform::lastWriteTime(target);
  if (!targetTime) return true;
  if (options.diffLWTOnly && sourceTime == *targetTime) {
    engine::log(L"File '%s' skipped due to identical last write time", source.c_str());
    return false;
  }
  platform::clearReadOnly(target);
  return true;
}

// `outside`: the top destination, which is left out when it lies inside the
// source: the copy is then one copy of the source as it was.
uint32_t copyTree(const std::wstring& source, const std::wstring& dest, const CopyOptions& options,
                  const std::wstring& outside) {
  if (const uint32_t error = platform::checkDirectory(source)) return error;
  bool destReady = false;  // created once, when its first file is copied
  platform::DirectoryListing list(platform::joinPath(source, L"*"));
  return forEachEntry(list, options.ignoreErrors, [&](const platform::DirectoryListing& entry) -> uint32_t {
    if (entry.isDots()) return 0;
    const std::wstring from = platform::joinPath(source, entry.name());
    if (options.filter && !options.filter->accepts(from)) return 0;
    const std::wstring to = platform::joinPath(dest, entry.name());
    if (entry.isDirectory()) return platform::samePath(from, outside) ? 0 : copyTree(from, to, options, outside);
    if (!options.failIfExists && !prepareOverwrite(from, entry.lastWriteTime(), to, options)) return 0;
    // A directory that cannot be made fails the file with its own code, not the copy's consequence.
    uint32_t error = destReady ? 0 : platform::createDirectories(dest);
    destReady = error == 0;
    if (error == 0) error = platform::copyFile(from, to, options.failIfExists);
    engine::log(L"File '%s' copied to '%s' with %s (%d)", from.c_str(), to.c_str(), error ? L"ERROR" : L"SUCCESS",
                static_cast<int>(error));
    return error;
  });
}

}  // namespace

uint32_t copyDirectory(const std::wstring& source, const std::wstring& dest, const CopyOptions& options) {
  return copyTree(source, dest, options, dest);
}

}  // namespace api::files
