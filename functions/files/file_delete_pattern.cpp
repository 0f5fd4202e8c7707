#include "engine/log.h"
#include "functions/files/detail/each_entry.h"
#include "functions/files/detail/file_delete.h"
#include "functions/files/functions.h"
#include "platform/errors.h"
#include "platform/file_system.h"
#include "platform/path.h"

namespace api::files {
namespace {

// The directory a wildcard pattern lists, in the extended form that reaches
// every name in it (`keep.` too).
std::wstring listedDirectory(const std::wstring& pattern) {
  const size_t cut = pattern.find_last_of(L"\\/");
  return platform::extendedPath(cut == std::wstring::npos ? L"." : pattern.substr(0, cut + 1));
}

}  // namespace

// Every match goes to the delete, directories (even "." and "..") included:
// those fail like any other file that cannot be deleted.
void FunctionFileDeletePattern::execute() {
  clearResult();
  const std::wstring path = expand(path_);
  engine::log(L"fileDeletePattern from '%s'. SkipErrors: %d. AfterReboot: %d", path.c_str(), ignoreErrors_,
              afterRebootIfFails_);
  platform::DirectoryListing list(path);
  const std::wstring directory = platform::parentPath(path), listed = listedDirectory(path);
  const DeleteOptions options{ignoreErrors_, renameIfFails_, afterRebootIfFails_};
  // No match at all is nothing to do.
  uint32_t firstError = list.valid() || list.error() == platform::kErrorFileNotFound ? 0 : list.error();
  if (list.valid()) {
    firstError = forEachEntry(list, ignoreErrors_, [&](const platform::DirectoryListing& entry) -> uint32_t {
      const uint32_t code = deleteFile(platform::joinPath(listed, entry.name()), entry.attributes(), options);
      if (code != 0)
        engine::log(L"Cannot delete '%s\\%s'. Error %d", directory.c_str(), entry.name(), static_cast<int>(code));
      return code;
    });
  }
  list.close();
  if (firstError) fail(firstError);
  logEnd();
}

const engine::TagDoc FunctionFileDeletePattern::doc{
    L"Deletes what matches `path`, a path whose last part is a wildcard pattern (`*.tmp`), expanded when it runs: read-only files and names like `keep.` too. A matching directory (with `*` also `.` and `..`) is tried like a file and fails, so match files only. `renameIfFails`, `afterRebootIfFails` and `ignoreErrors` work as in `dirDeleteRec`; no match at all is success.",
    L"fileDeletePattern from '%s'. SkipErrors: %d. AfterReboot: %d\nCannot delete '%s\\%s'. Error %d\nfileDeletePattern function end with %s. err:'%s'",
    L"Error text: `3` the directory of the pattern does not exist, else the first failed delete's Windows code (`32` in use, `5` access denied); a file left for the restart without being renamed still fails with its delete's code.",
    L"<fileDeletePattern path=\"C:\\Program Files\\App\\*.old\" renameIfFails=\"true\" afterRebootIfFails=\"true\"/>"};

}  // namespace api::files
