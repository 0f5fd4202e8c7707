#include <windows.h>
#include <shlwapi.h>

#include "engine/log.h"
#include "functions/files/functions.h"

namespace api::files {

// An existing directory is no file.
void FunctionFileExists::execute() {
  const std::wstring path = expand(path_);
  engine::log(L"fileExists function called for %s", path.c_str());
  finish(PathFileExistsW(path.c_str()) && !PathIsDirectoryW(path.c_str()));
}

}  // namespace api::files
