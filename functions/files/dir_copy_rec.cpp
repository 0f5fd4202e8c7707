#include "engine/log.h"
#include "functions/files/detail/directory_copier.h"
#include "functions/files/functions.h"

namespace api::files {

const Parameters& FunctionDirCopyRecursive::parameters() {
  static const Parameters list = engine::joined({engine::flag<&FunctionDirCopyRecursive::ignoreErrors_>(L"ignoreErrors"),
      engine::flag<&FunctionDirCopyRecursive::diffLWTOnly_>(L"diffLWTOnly"),
      engine::literal<&FunctionDirCopyRecursive::include_>(L"include", Need::Optional),
      engine::literal<&FunctionDirCopyRecursive::exclude_>(L"exclude", Need::Optional)}, CopyFunction::parameters());
  return list;
}

// The filters are compiled once; one that does not compile refuses the script.
bool FunctionDirCopyRecursive::readAttributes() { return readParameters() && filter_.compile(include_, exclude_); }

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
