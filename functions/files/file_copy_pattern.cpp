#include <windows.h>

#include "engine/log.h"
#include "functions/files/detail/each_entry.h"
#include "functions/files/functions.h"
#include "platform/file_system.h"
#include "platform/path.h"

namespace api::files {

const Parameters& FunctionFileCopyPattern::parameters() {
  static const Parameters list = engine::joined({engine::flag<&FunctionFileCopyPattern::ignoreErrors_>(L"ignoreErrors"),
      engine::flag<&FunctionFileCopyPattern::diffLWTOnly_>(L"diffLWTOnly")}, CopyFunction::parameters());
  return list;
}

// Copies the files matching `src` into the existing directory `dest`. No
// match at all is error 2, as the enumeration reports it.
void FunctionFileCopyPattern::execute() {
  clearResult();
  const std::wstring src = expand(src_), dest = expand(dest_);
  engine::log(L"fileCopyPattern from '%s' to '%s'. FailIfExists: %d. SkipErrors: %d", src.c_str(), dest.c_str(),
              failIfExists_, ignoreErrors_);
  if (!platform::pathExists(dest)) {
    fail(ERROR_PATH_NOT_FOUND);
    logEnd();
    return;
  }
  platform::DirectoryListing list(src);
  uint32_t firstError = list.error();
  if (list.valid()) {
    firstError = forEachEntry(list, ignoreErrors_, [&](const platform::DirectoryListing& entry) -> uint32_t {
      if (entry.isDirectory()) return 0;
      const std::wstring from = platform::siblingPath(src, entry.name());
      const std::wstring to = platform::joinPath(dest, entry.name());
      if (!failIfExists_ && diffLWTOnly_ && platform::sameLastWriteTime(from, to)) {
        engine::log(L"File '%s' skipped due to the same LWT", from.c_str());
        return 0;
      }
      const uint32_t error = platform::copyFile(from, to, failIfExists_);
      engine::log(error ? L"Cannot copy '%s' to '%s'" : L"File '%s' copied to '%s'", from.c_str(), to.c_str());
      return error;
    });
  }
  if (firstError) fail(firstError);
  logEnd();
}

}  // namespace api::files
