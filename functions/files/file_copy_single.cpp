#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/files/functions.h"
#include "platform/file_system.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"fileCopySingle from '%s' to '%s'. FailIfExists: %d"};

}  // namespace

const Parameters& FunctionFileCopySingle::parameters() {
  static const Parameters list = engine::joined({engine::flag<&FunctionFileCopySingle::diffLWTOnly_>(L"diffLWTOnly")}, CopyFunction::parameters());
  return list;
}

void FunctionFileCopySingle::execute() {
  clearResult();
  const std::wstring src = expand(src_), dest = expand(dest_);
  engine::log(kStart, src.c_str(), dest.c_str(), failIfExists_);
  // Only an overwriting copy can skip a file that did not change.
  if (!failIfExists_ && diffLWTOnly_ && platform::sameLastWriteTime(src, dest)) {
    engine::log(kSkippedSameLwt, src.c_str());
  } else if (const uint32_t error = platform::copyFile(src, dest, failIfExists_)) {
    fail(error);
  }
  logEnd();
}

const engine::TagDoc FunctionFileCopySingle::doc{
    L"Copies the file `src` to `dest`, both expanded when it runs (`dest` is the new file's full path, not a directory); no directory is created. With `failIfExists` (default `true`) an existing `dest` fails; with `failIfExists=\"false\"` it is replaced, and `diffLWTOnly=\"true\"` then skips the copy when both files have the same last write time.",
    {kStart, kSkippedSameLwt, engine::kErrorEnd.as(L"fileCopySingle")},
    L"Error text: the Windows code of the copy, e.g. `80` `dest` exists (with `failIfExists`), `2` no `src`, `3` a missing directory, `5` access denied (a read-only `dest`), `32` a file in use.",
    L"<fileCopySingle src=\"%enginedir%app.exe\" dest=\"C:\\Program Files\\App\\app.exe\" failIfExists=\"false\" diffLWTOnly=\"true\">\n  <onerrorspec err=\"32\"><trace value=\"app.exe is in use\"/></onerrorspec>\n</fileCopySingle>"};

}  // namespace api::files
