#include "engine/log.h"
#include "functions/files/directory_copier.h"
#include "functions/files/functions.h"

namespace api::files {

bool FunctionDirCopyRecursive::readAttributes() {
  std::wstring include, exclude;
  return CopyFunction::readAttributes() && readFlag(L"ignoreErrors", ignoreErrors_) &&
         readFlag(L"diffLWTOnly", diffLWTOnly_) && readText(L"include", include, engine::Need::Optional) &&
         readText(L"exclude", exclude, engine::Need::Optional) && filter_.compile(include, exclude);
}

// With ignoreErrors the copy goes on to the end, but a failed file still
// makes the function fail with the first error.
void FunctionDirCopyRecursive::execute() {
  clearResult();
  const std::wstring src = expand(src_), dest = expand(dest_);
  engine::log(L"dirCopyRec from '%s' to '%s'. FailIfExists: %d. SkipErrors: %d", src.c_str(), dest.c_str(),
              failIfExists_, ignoreErrors_);
  if (const uint32_t error = copyDirectory(src, dest, CopyOptions{failIfExists_, ignoreErrors_, diffLWTOnly_, &filter_}))
    fail(error);
  logEnd();
}

}  // namespace api::files
