#include "engine/log.h"
#include "functions/files/functions.h"
#include "functions/files/detail/text_file.h"

namespace api::files {

const Parameters& FunctionFileWrite::parameters() {
  static const Parameters list = {engine::handle<&FunctionFileWrite::handle_>(L"handle", Need::NonEmpty),
      engine::text<&FunctionFileWrite::string_>(L"string", Need::NonEmpty)};
  return list;
}

void FunctionFileWrite::execute() {
  const std::wstring text = expand(string_);
  engine::log(L"fileWrite %s for handle %s", text.c_str(), handle_.c_str());
  bool written = false;
  if (TextFile* file = handles().findAs<TextFile>(handle_)) {
    written = file->write(text);
    if (!written) engine::log(L"fileWrite %s failed for handle %s", text.c_str(), handle_.c_str());
  } else {
    engine::log(L"fileWrite handle %s does not refer to an opened writable file", handle_.c_str());
  }
  finishAs(L"fileWrite", written);
}

const engine::TagDoc FunctionFileWrite::doc{
    L"Writes `string`, expanded when it runs, as UTF-8 to the file open under `handle`, at once and with no line end added (write `&#13;&#10;` for one). A write that fails leaves none of its bytes behind and makes every later `fileWrite` to that handle False too; text with a lone surrogate is refused. A `string` that expands to nothing writes nothing and is True.",
    L"fileWrite %s for handle %s\nfileWrite %s failed for handle %s\nfileWrite handle %s does not refer to an opened writable file\nfileWrite end with %s",
    L"True: the bytes are on the disk (in the file beside it until `fileClose`, without `append`). False: `handle` names no file opened by `fileOpenOrCreate`, or this or an earlier write to it failed (a full disk).",
    L"<fileOpenOrCreate path=\"%TEMP%\\update.log\" handle=\"log\" append=\"true\"/>\n<fileWrite handle=\"log\" string=\"updated %enginedir%&#13;&#10;\"><onFalse><exit code=\"3\"/></onFalse></fileWrite>"};

}  // namespace api::files
