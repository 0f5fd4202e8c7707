#include "engine/log.h"
#include "functions/files/detail/each_entry.h"
#include "functions/files/functions.h"
#include "platform/errors.h"
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
  const platform::PathState target = platform::inspectPath(dest);
  if (target.error || target.kind == platform::PathKind::Missing) {
    fail(target.error ? target.error : platform::kErrorPathNotFound);
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

const engine::TagDoc FunctionFileCopyPattern::doc{
    L"Copies every file that matches `src`, a path whose last part is a wildcard pattern (`*.dll`), into the existing directory `dest` under its own name; both are expanded when it runs, and directories are not copied. `failIfExists` (default `true`) and `diffLWTOnly` work as in `fileCopySingle`; with `ignoreErrors=\"true\"` the copy goes on after a failure.",
    L"fileCopyPattern from '%s' to '%s'. FailIfExists: %d. SkipErrors: %d\nFile '%s' skipped due to the same LWT\nCannot copy '%s' to '%s'\nFile '%s' copied to '%s'\nfileCopyPattern function end with %s. err:'%s'",
    L"Error text: `3` `dest` (nothing is copied) or the directory of `src` does not exist, `2` nothing matches `src`, else the first failed copy's Windows code, also with `ignoreErrors` (`80` a file exists with `failIfExists`, `5`, `32`).",
    L"<fileCopyPattern src=\"%enginedir%plugins\\*.dll\" dest=\"C:\\Program Files\\App\\plugins\" failIfExists=\"false\" ignoreErrors=\"true\">\n  <onerror><trace value=\"some plugins were not copied: %error%\"/></onerror>\n</fileCopyPattern>"};

}  // namespace api::files
