#include "platform/format.h"

// msvcrt's own _vscwprintf and _vsnwprintf, which stdio.h declares as imports.
#include <stdio.h>

namespace platform {

void formatInto(std::wstring& out, const wchar_t* format, va_list args) {
  va_list measure;
  va_copy(measure, args);
  const int length = _vscwprintf(format, measure);
  va_end(measure);
  if (length <= 0) {
    out.clear();
    return;
  }
  out.resize(static_cast<size_t>(length) + 1);
  _vsnwprintf(out.data(), out.size(), format, args);
  out.resize(static_cast<size_t>(length));
}

}  // namespace platform
