#include "platform/format.h"

namespace platform {

std::wstring format(const wchar_t* format, ...) {
  std::wstring out;
  va_list args;
  va_start(args, format);
  formatInto(out, format, args);
  va_end(args);
  return out;
}

}  // namespace platform
