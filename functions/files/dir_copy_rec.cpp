#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/files/detail/directory_copier.h"
#include "functions/files/functions.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"dirCopyRec from '%s' to '%s'. FailIfExists: %d. SkipErrors: %d"};

}  // namespace

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
  engine::log(kStart, src.c_str(), dest.c_str(), failIfExists_, ignoreErrors_);
  if (const uint32_t error = copyDirectory(src, dest, CopyOptions{failIfExists_, ignoreErrors_, diffLWTOnly_, &filter_}))
    fail(error);
  logEnd();
}

const engine::TagDoc FunctionDirCopyRecursive::doc{
    L"Copies the tree `src` into `dest`, both expanded when it runs; a directory is created when its first file is copied, so one without files is not. `failIfExists` (default `true`) and `diffLWTOnly` work as in `fileCopySingle`, and a read-only file is overwritten too. `include` and `exclude` are ECMAScript expressions (taken as written, compiled when the script is prepared) matched against each entry's whole source path: a directory they reject is not entered, and a match too complex to decide rejects. With `ignoreErrors=\"true\"` the copy goes on after a failure; a `dest` inside `src` is left out.",
    {kStart, kSkippedSameTime, kCopiedWith, engine::kErrorEnd.as(L"dirCopyRec")},
    L"Error text: the first failure's Windows code, also with `ignoreErrors`: `3` `src` is no directory, `80` a file exists (with `failIfExists`), `5` access denied, `32` a file in use; a directory that cannot be created fails each of its files with the creation's own code. Files copied before a failure stay.",
    L"<dirCopyRec src=\"%enginedir%app\" dest=\"C:\\Program Files\\App\" failIfExists=\"false\" diffLWTOnly=\"true\" exclude=\".*\\\\logs(\\\\.*)?\">\n  <onerror><trace value=\"copy failed: %error%\"/></onerror>\n</dirCopyRec>"};

}  // namespace api::files
