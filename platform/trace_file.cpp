#include "platform/trace_file.h"

#include <windows.h>
#include <share.h>

#include "platform/error_text.h"
#include "platform/fault.h"

namespace platform {

uint32_t TraceFile::open(const std::wstring& path) {
  file_.reset();
  if (const uint32_t error = injectedFault(Call::Create)) return error;
  SetLastError(0);
  file_.reset(_wfsopen(path.c_str(), L"at, ccs=UTF-8", _SH_DENYWR));
  return file_ ? 0 : lastErrorOr(ERROR_FILE_NOT_FOUND);
}

uint32_t TraceFile::writeLine(const wchar_t* line) {
  if (const uint32_t error = injectedFault(Call::TraceWrite)) return error;
  SetLastError(0);
  const bool written = std::fputws(line, file_.get()) != WEOF && std::fputws(L"\n", file_.get()) != WEOF;
  return std::fflush(file_.get()) == 0 && written ? 0 : lastErrorOr(ERROR_WRITE_FAULT);
}

}  // namespace platform
