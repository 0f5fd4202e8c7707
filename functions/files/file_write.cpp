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

}  // namespace api::files
