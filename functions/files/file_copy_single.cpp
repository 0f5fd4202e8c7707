#include "engine/log.h"
#include "functions/files/functions.h"
#include "platform/file_system.h"

namespace api::files {

const Parameters& FunctionFileCopySingle::parameters() {
  static const Parameters list = engine::joined({engine::flag<&FunctionFileCopySingle::diffLWTOnly_>(L"diffLWTOnly")}, CopyFunction::parameters());
  return list;
}

void FunctionFileCopySingle::execute() {
  clearResult();
  const std::wstring src = expand(src_), dest = expand(dest_);
  engine::log(L"fileCopySingle from '%s' to '%s'. FailIfExists: %d", src.c_str(), dest.c_str(), failIfExists_);
  // Only an overwriting copy can skip a file that did not change.
  if (!failIfExists_ && diffLWTOnly_ && platform::sameLastWriteTime(src, dest)) {
    engine::log(L"File '%s' skipped due to the same LWT", src.c_str());
  } else if (const uint32_t error = platform::copyFile(src, dest, failIfExists_)) {
    fail(error);
  }
  logEnd();
}

}  // namespace api::files
