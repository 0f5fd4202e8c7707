#include "functions/files/functions.h"

namespace api::files {

bool DeleteFunction::readAttributes() {
  return readText(L"path", path_, engine::Need::NonEmpty) && readFlag(L"ignoreErrors", ignoreErrors_) &&
         readFlag(L"afterRebootIfFails", afterRebootIfFails_) && readFlag(L"renameIfFails", renameIfFails_);
}

}  // namespace api::files
