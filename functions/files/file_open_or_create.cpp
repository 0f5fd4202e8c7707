#include "engine/log.h"
#include "functions/files/functions.h"
#include "functions/files/detail/text_file.h"

namespace api::files {

const Parameters& FunctionFileOpenOrCreate::parameters() {
  static const Parameters list = {engine::text<&FunctionFileOpenOrCreate::path_>(L"path", Need::NonEmpty),
      engine::newHandle<&FunctionFileOpenOrCreate::handle_>(L"handle", Need::NonEmpty),
      engine::flag<&FunctionFileOpenOrCreate::append_>(L"append")};
  return list;
}

// A handle name already in use is closed and takes the new file.
void FunctionFileOpenOrCreate::execute() {
  const std::wstring path = expand(path_);
  engine::log(L"fileOpen %s with handle %s", path.c_str(), handle_.c_str());
  std::unique_ptr<TextFile> file = TextFile::open(path, append_);
  const bool opened = file != nullptr;
  if (opened) {
    handles().store(handle_, std::move(file), TextFile::kind);
  } else {
    engine::log(L"fileOpen failed opening file %s", path.c_str());
  }
  finishAs(L"fileOpen", opened);
}

const engine::TagDoc FunctionFileOpenOrCreate::doc{
    L"Opens the file `path`, expanded when it runs, for writing under the handle name `handle` (taken as written): its new content goes to a file beside it that takes its place, whole, at `fileClose` (or when the script ends), so the file is never seen half-written; with `append=\"true\"` writes go straight to its end. A name already in use is closed and takes the new file, unless the open fails.",
    L"fileOpen %s with handle %s\nfileOpen failed opening file %s\nfileOpen end with %s",
    L"True: the file is open under `handle`. False: it could not be opened (a missing directory, access denied, a directory).",
    L"<fileOpenOrCreate path=\"C:\\Program Files\\App\\update.txt\" handle=\"report\" append=\"true\">\n  <onFalse><trace value=\"no report file\"/></onFalse>\n</fileOpenOrCreate>"};

}  // namespace api::files
