#include "platform/line_file.h"

#include <windows.h>
#include <share.h>

#include "platform/error_text.h"
#include "platform/fault.h"

namespace platform {

uint32_t LineFile::open(const std::wstring& path) {
  if (const uint32_t error = injectedFault(Call::Create)) return error;
  SetLastError(0);
  // Readers may look while the run goes on; a second writer is refused.
  file_.reset(_wfsopen(path.c_str(), L"ab", _SH_DENYWR));
  return file_ ? 0 : lastErrorOr(ERROR_FILE_NOT_FOUND);
}

uint32_t LineFile::writeLine(std::string_view line) {
  if (const uint32_t error = injectedFault(Call::Write)) return error;
  SetLastError(0);
  const bool written = std::fwrite(line.data(), 1, line.size(), file_.get()) == line.size() &&
                       std::fputc('\n', file_.get()) != EOF;
  return std::fflush(file_.get()) == 0 && written ? 0 : lastErrorOr(ERROR_WRITE_FAULT);
}

}  // namespace platform
