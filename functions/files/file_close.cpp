#include "engine/log.h"
#include "functions/files/functions.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"fileClose for handle %s"};

}  // namespace

const Parameters& FunctionFileClose::parameters() {
  static const Parameters list = {engine::handle<&FunctionFileClose::handle_>(L"handle", Need::NonEmpty)};
  return list;
}

// Closing a name that holds nothing is no error.
void FunctionFileClose::execute() {
  engine::log(kStart, handle_.c_str());
  handles().close(handle_);
}

const engine::TagDoc FunctionFileClose::doc{
    L"Closes what is open under the handle name `handle` (taken as written) and frees the name: meant for files from `fileOpenOrCreate`, it closes a handle of any kind. A name that holds nothing is no error; what a script leaves open is closed when it ends.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<fileOpenOrCreate path=\"C:\\Program Files\\App\\version.txt\" handle=\"version\"/>\n<fileWrite handle=\"version\" string=\"24.3\"/>\n<fileClose handle=\"version\"/>"};

}  // namespace api::files
