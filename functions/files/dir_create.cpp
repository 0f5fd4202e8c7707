#include <windows.h>

#include "engine/log.h"
#include "functions/files/functions.h"

namespace api::files {

bool FunctionDirCreate::readAttributes() { return readText(L"path", path_, engine::Need::NonEmpty); }

// Creates the last component only; an existing directory is success.
void FunctionDirCreate::execute() {
  clearResult();
  const std::wstring path = expand(path_);
  engine::log(L"dirCreate function called for %s", path.c_str());
  if (!CreateDirectoryW(path.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
    if (const DWORD error = GetLastError()) fail(error);
  }
  logEnd();
}

}  // namespace api::files
