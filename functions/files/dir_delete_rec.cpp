#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/files/detail/file_delete.h"
#include "functions/files/functions.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"dirDeleteRec from '%s'. SkipErrors: %d, afterReboot: %d"};

}  // namespace

void FunctionDirDeleteRecursive::execute() {
  clearResult();
  const std::wstring path = expand(path_);
  // Punctuated unlike fileDeletePattern's line: the program's established
  // wording, which scripts and log readers match.
  engine::log(kStart, path.c_str(), ignoreErrors_, afterRebootIfFails_);
  if (const uint32_t error = deleteTree(path, DeleteOptions{ignoreErrors_, renameIfFails_, afterRebootIfFails_}))
    fail(error);
  logEnd();
}

const engine::TagDoc FunctionDirDeleteRecursive::doc{
    L"Deletes the directory `path`, expanded when it runs, with all it holds: read-only files and names Windows' ordinary paths cannot reach (`keep.`, `name `) too; a linked directory inside is unlinked, never entered. A file that cannot be deleted is renamed beside itself to `deleted_<tick>_<name>` with `renameIfFails=\"true\"` (then it counts as deleted) and is deleted at the next restart with `afterRebootIfFails=\"true\"`; `ignoreErrors=\"true\"` goes on after a failure. A missing directory is success; a directory that stays behind (in use, say) is a failure, even once its files are gone.",
    {kStart, engine::kErrorEnd.as(L"dirDeleteRec")},
    L"Error text: the first Windows code of a file or directory that could not be deleted, e.g. `32` in use, `5` access denied; a file left for the restart without being renamed still fails with its delete's code. What was deleted before a failure stays deleted.",
    L"<dirDeleteRec path=\"C:\\Program Files\\App\\cache\" renameIfFails=\"true\" afterRebootIfFails=\"true\">\n  <onerror><trace value=\"cache not removed: %error%\"/></onerror>\n</dirDeleteRec>"};

}  // namespace api::files
