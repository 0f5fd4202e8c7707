#include "functions/files/file_delete.h"

#include <shlwapi.h>

#include "platform/file_system.h"
#include "platform/format.h"

namespace api::files {
namespace {

std::wstring inDirectory(const std::wstring& directory, const std::wstring& name) {
  // A pattern without a directory part names files in the current directory.
  return directory.empty() ? name : directory + L"\\" + name;
}

// A free name in the same directory, built from the tick count.
std::wstring renamedPath(const std::wstring& directory, const std::wstring& name) {
  std::wstring path;
  do {
    Sleep(1);
    path = inDirectory(directory, platform::format(L"deleted_%d_%s", static_cast<int>(GetTickCount()), name.c_str()));
  } while (PathFileExistsW(path.c_str()));
  return path;
}

void removeDirectory(const std::wstring& directory) {
  if (RemoveDirectoryW(directory.c_str()) || GetLastError() != ERROR_ACCESS_DENIED) return;
  const DWORD attributes = GetFileAttributesW(directory.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY))
    SetFileAttributesW(directory.c_str(), attributes & ~FILE_ATTRIBUTE_READONLY);
  RemoveDirectoryW(directory.c_str());
}

}  // namespace

uint32_t deleteFile(const std::wstring& directory, const std::wstring& name, DWORD attributes,
                    const DeleteOptions& options) {
  std::wstring path = inDirectory(directory, name);
  if (attributes & FILE_ATTRIBUTE_READONLY) SetFileAttributesW(path.c_str(), attributes & ~FILE_ATTRIBUTE_READONLY);
  if (DeleteFileW(path.c_str())) return 0;
  uint32_t code = GetLastError();
  if (code == ERROR_FILE_NOT_FOUND) return 0;
  if (options.renameIfFails) {
    std::wstring moved = renamedPath(directory, name);
    if (!MoveFileExW(path.c_str(), moved.c_str(), MOVEFILE_WRITE_THROUGH)) return code;
    code = 0;
    path = std::move(moved);
  }
  if (options.afterRebootIfFails && !MoveFileExW(path.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT) &&
      !options.renameIfFails)
    code = GetLastError();
  return code;
}

bool deleteTree(const std::wstring& directory, const DeleteOptions& options, uint32_t& firstError) {
  const DWORD attributes = GetFileAttributesW(directory.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) return true;
  bool result = true;
  platform::DirectoryListing list(platform::joinPath(directory, L"*"));
  for (; list.valid(); list.next()) {
    if (list.isDots()) continue;
    const std::wstring name = list.name();
    if (list.isDirectory()) {
      // A linked directory is unlinked, never entered: its target is not ours.
      if (list.entry().dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) {
        RemoveDirectoryW(platform::joinPath(directory, name).c_str());
        continue;
      }
      if (!deleteTree(platform::joinPath(directory, name), options, firstError)) {
        result = false;
        if (!options.ignoreErrors) break;
      }
      continue;
    }
    if (const uint32_t code = deleteFile(directory, name, list.entry().dwFileAttributes, options)) {
      if (firstError == 0) firstError = code;
      result = false;
      if (!options.ignoreErrors) break;
    }
  }
  list.close();
  // A directory that stays behind (in use, say) is no error.
  if (result) removeDirectory(directory);
  return result;
}

}  // namespace api::files
