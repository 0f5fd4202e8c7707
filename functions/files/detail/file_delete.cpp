#include "functions/files/detail/file_delete.h"

#include "functions/files/detail/each_entry.h"
#include "platform/clock.h"
#include "platform/errors.h"
#include "platform/file_system.h"
#include "platform/format.h"
#include "platform/path.h"

namespace api::files {
namespace {

// A free name beside the file, built from the tick count.
std::wstring renamedPath(const std::wstring& path) {
  const std::wstring name(platform::fileName(path));
  std::wstring renamed;
  do {
    platform::sleep(1);
    renamed = platform::siblingPath(
        path, platform::format(L"deleted_%d_%s", static_cast<int>(platform::tickCount()), name.c_str()));
  } while (platform::pathExists(renamed));
  return renamed;
}

// 0 when the directory is gone, else the code of the removal that left it.
uint32_t removeDirectory(const std::wstring& path) {
  const uint32_t error = platform::removeDirectory(path);
  return error && platform::pathExists(path) ? error : 0;
}

}  // namespace

uint32_t deleteFile(const std::wstring& path, uint32_t attributes, const DeleteOptions& options) {
  uint32_t code = platform::deleteFile(path, attributes);
  // A file already gone is deleted; one that is still there is not, whatever the code says.
  if (code == 0 || (code == platform::kErrorFileNotFound && !platform::pathExists(path))) return 0;
  std::wstring remaining = path;
  if (options.renameIfFails) {
    std::wstring moved = renamedPath(path);
    if (platform::moveFile(path, moved, platform::MoveFlags::None) != 0) return code;
    code = 0;
    remaining = std::move(moved);
  }
  if (options.afterRebootIfFails) {
    const uint32_t scheduled = platform::deleteAtRestart(remaining);
    if (scheduled != 0 && !options.renameIfFails) code = scheduled;
  }
  return code;
}

uint32_t deleteTree(const std::wstring& path, const DeleteOptions& options) {
  // In its extended form, the tree's every name is reached: `keep.` too.
  const std::wstring directory = platform::extendedPath(path);
  // Nothing there is nothing to delete; a directory whose attributes cannot be read is a failure.
  if (const uint32_t error = platform::checkDirectory(directory))
    return error == platform::kErrorPathNotFound ? 0 : error;
  platform::DirectoryListing list(platform::joinPath(directory, L"*"));
  const uint32_t firstError =
      forEachEntry(list, options.ignoreErrors, [&](const platform::DirectoryListing& entry) -> uint32_t {
        if (entry.isDots()) return 0;
        const std::wstring path = platform::joinPath(directory, entry.name());
        if (!entry.isDirectory()) return deleteFile(path, entry.attributes(), options);
        // A linked directory is unlinked, never entered: its target is not ours.
        if (entry.isLink()) return removeDirectory(path);
        return deleteTree(path, options);
      });
  list.close();
  return firstError ? firstError : removeDirectory(directory);
}

}  // namespace api::files
