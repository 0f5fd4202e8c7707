#include <windows.h>

#include "engine/log.h"
#include "functions/files/functions.h"
#include "platform/file_system.h"

namespace api::files {

const Parameters& FunctionDirCreate::parameters() {
  static const Parameters list = {engine::text<&FunctionDirCreate::path_>(L"path", Need::NonEmpty)};
  return list;
}

// Creates the last component only; an existing directory is success.
void FunctionDirCreate::execute() {
  clearResult();
  const std::wstring path = expand(path_);
  engine::log(L"dirCreate function called for %s", path.c_str());
  const uint32_t error = platform::createDirectory(path);
  if (error != 0 && error != ERROR_ALREADY_EXISTS) fail(error);
  logEnd();
}

}  // namespace api::files
