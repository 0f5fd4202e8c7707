#include <windows.h>
#include <shlwapi.h>

#include "engine/log.h"
#include "functions/files/functions.h"
#include "functions/files/last_write_time.h"
#include "platform/file_system.h"

namespace api::files {

bool FunctionFileCopyPattern::readAttributes() {
  return CopyFunction::readAttributes() && readFlag(L"ignoreErrors", ignoreErrors_) &&
         readFlag(L"diffLWTOnly", diffLWTOnly_);
}

// Copies the files matching `src` into the existing directory `dest`. No
// match at all is error 2, as the enumeration reports it.
void FunctionFileCopyPattern::execute() {
  clearResult();
  const std::wstring src = expand(src_), dest = expand(dest_);
  engine::log(L"fileCopyPattern from '%s' to '%s'. FailIfExists: %d. SkipErrors: %d", src.c_str(), dest.c_str(),
              failIfExists_, ignoreErrors_);
  if (!PathFileExistsW(dest.c_str())) {
    fail(ERROR_PATH_NOT_FOUND);
    logEnd();
    return;
  }
  const std::wstring directory = platform::parentPath(src);
  platform::DirectoryListing list(src);
  DWORD firstError = list.valid() ? 0 : list.error();
  for (; list.valid(); list.next()) {
    if (list.isDirectory()) continue;
    const std::wstring from = directory.empty() ? list.name() : platform::joinPath(directory, list.name());
    const std::wstring to = platform::joinPath(dest, list.name());
    if (!failIfExists_ && diffLWTOnly_ && sameLastWriteTime(from, to)) {
      engine::log(L"File '%s' skipped due to the same LWT", from.c_str());
      continue;
    }
    if (CopyFileW(from.c_str(), to.c_str(), failIfExists_)) {
      engine::log(L"File '%s' copied to '%s'", from.c_str(), to.c_str());
      continue;
    }
    const DWORD error = GetLastError();
    engine::log(L"Cannot copy '%s' to '%s'", from.c_str(), to.c_str());
    if (firstError == 0) firstError = error;
    if (!ignoreErrors_) break;
  }
  if (firstError) fail(firstError);
  logEnd();
}

}  // namespace api::files
