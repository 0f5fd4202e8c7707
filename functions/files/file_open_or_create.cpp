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

}  // namespace api::files
