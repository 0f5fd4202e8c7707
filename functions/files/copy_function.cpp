#include "functions/files/functions.h"

namespace api::files {

bool CopyFunction::readAttributes() {
  return readText(L"src", src_, engine::Need::NonEmpty) && readText(L"dest", dest_, engine::Need::NonEmpty) &&
         readFlag(L"failIfExists", failIfExists_);
}

}  // namespace api::files
