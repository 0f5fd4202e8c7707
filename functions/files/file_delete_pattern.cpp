#include "engine/log.h"
#include "functions/files/file_delete.h"
#include "functions/files/functions.h"
#include "platform/file_system.h"

namespace api::files {

// Every match goes to the delete, directories (even "." and "..") included:
// those fail like any other file that cannot be deleted.
void FunctionFileDeletePattern::execute() {
  clearResult();
  const std::wstring path = expand(path_);
  engine::log(L"fileDeletePattern from '%s'. SkipErrors: %d. AfterReboot: %d", path.c_str(), ignoreErrors_,
              afterRebootIfFails_);
  platform::DirectoryListing list(path);
  uint32_t firstError = 0;
  if (!list.valid() && list.error() != ERROR_FILE_NOT_FOUND) firstError = list.error();
  const std::wstring directory = platform::parentPath(path);
  const DeleteOptions options{ignoreErrors_, renameIfFails_, afterRebootIfFails_};
  for (; list.valid(); list.next()) {
    const uint32_t code = deleteFile(directory, list.name(), list.entry().dwFileAttributes, options);
    if (code == 0) continue;
    if (firstError == 0) firstError = code;
    engine::log(L"Cannot delete '%s\\%s'. Error %d", directory.c_str(), list.name(), static_cast<int>(code));
    if (!ignoreErrors_) break;
  }
  list.close();
  if (firstError) fail(firstError);
  logEnd();
}

}  // namespace api::files
