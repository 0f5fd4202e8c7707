#include "functions/files/detail/text_file.h"
#include "functions/files/functions.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"fileClose for handle %s"};

const engine::TagDoc doc{
    L"Closes what is open under the handle name `handle` (taken as written) and frees the name: meant for files from `fileOpenOrCreate`, it closes a handle of any kind. A file opened without `append` takes its new content here, whole, unless a write to it failed: then, or when the move is refused, it stays as it was and a line says so. A name that holds nothing is no error; what a script leaves open is closed when it ends.",
    {kStart, kKeptAsBefore},
    L"No result: a plain function has no handlers.",
    L"<fileOpenOrCreate path=\"C:\\Program Files\\App\\version.txt\" handle=\"version\"/>\n<fileWrite handle=\"version\" string=\"24.3\"/>\n<fileClose handle=\"version\"/>"};

}  // namespace

const FunctionCloseHandle::Variant kFileClose{kStart, Need::NonEmpty, doc};

}  // namespace api::files
