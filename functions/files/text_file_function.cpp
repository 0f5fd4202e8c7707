#include "engine/log.h"
#include "functions/files/functions.h"
#include "platform/format.h"

namespace api::files {

void TextFileFunction::end(const wchar_t* prefix, bool result) {
  result_ = result;
  engine::log(platform::format(L"%s end with %%s", prefix).c_str(), result ? L"True" : L"False");
}

}  // namespace api::files
