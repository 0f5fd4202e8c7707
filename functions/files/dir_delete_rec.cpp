#include "engine/log.h"
#include "functions/files/detail/file_delete.h"
#include "functions/files/functions.h"

namespace api::files {

void FunctionDirDeleteRecursive::execute() {
  clearResult();
  const std::wstring path = expand(path_);
  // Punctuated unlike fileDeletePattern's line: the program's established
  // wording, which scripts and log readers match.
  engine::log(L"dirDeleteRec from '%s'. SkipErrors: %d, afterReboot: %d", path.c_str(), ignoreErrors_,
              afterRebootIfFails_);
  if (const uint32_t error = deleteTree(path, DeleteOptions{ignoreErrors_, renameIfFails_, afterRebootIfFails_}))
    fail(error);
  logEnd();
}

}  // namespace api::files
