#include "engine/log.h"
#include "functions/files/functions.h"

namespace api::files {

const Parameters& FunctionFileClose::parameters() {
  static const Parameters list = {engine::handle<&FunctionFileClose::handle_>(L"handle", Need::NonEmpty)};
  return list;
}

// Closing a name that holds nothing is no error.
void FunctionFileClose::execute() {
  engine::log(L"fileClose for handle %s", handle_.c_str());
  handles().close(handle_);
}

const engine::TagDoc FunctionFileClose::doc{
    L"Closes what is open under the handle name `handle` (taken as written) and frees the name: meant for files from `fileOpenOrCreate`, it closes a handle of any kind. A file opened without `append` takes its new content here, whole, unless a write to it failed: then, or when the move is refused, it stays as it was and a line says so. A name that holds nothing is no error; what a script leaves open is closed when it ends.",
    L"fileClose for handle %s\nCannot write the file '%s', it is as it was before fileOpen. Error: %d", L"No result: a plain function has no handlers.",
    L"<fileOpenOrCreate path=\"C:\\Program Files\\App\\version.txt\" handle=\"version\"/>\n<fileWrite handle=\"version\" string=\"24.3\"/>\n<fileClose handle=\"version\"/>"};

}  // namespace api::files
