#include "engine/log.h"
#include "functions/files/functions.h"
#include "platform/errors.h"
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
  if (error != 0 && error != platform::kErrorAlreadyExists) fail(error);
  logEnd();
}

const engine::TagDoc FunctionDirCreate::doc{
    L"Creates the directory `path`, expanded when it runs: its last level only, so its parent must exist. Success also when something of that name exists already, a directory or a file.",
    L"dirCreate function called for %s\ndirCreate function end with %s. err:'%s'",
    L"Error text: the Windows code of the creation, e.g. `3` the parent directory is missing, `5` access denied, `123` a name Windows does not accept.",
    L"<dirCreate path=\"C:\\Program Files\\App\\logs\">\n  <onerror><trace value=\"no log directory: %error%\"/></onerror>\n</dirCreate>"};

}  // namespace api::files
