#include "engine/log.h"
#include "functions/files/functions.h"
#include "platform/file_system.h"

namespace api::files {

void FunctionDirExists::execute() {
  const std::wstring path = expand(path_);
  engine::log(L"dirExists function called for %s", path.c_str());
  finish(platform::pathExists(path) && platform::isDirectory(path));
}

}  // namespace api::files
