#include "engine/log.h"

#include <cstdarg>
#include <cstdio>
#include <share.h>
#include <windows.h>

#include "platform/error_text.h"
#include "platform/format.h"
#include "platform/text.h"

namespace engine {
namespace {

struct LogState {
  bool debug = false;
  FILE* trace = nullptr;
  // Reused across calls: the log sits on every function's hot path.
  std::wstring text;
  std::string utf8;
};

LogState& state() {
  static LogState instance;
  return instance;
}

LONG WINAPI flushBeforeCrash(EXCEPTION_POINTERS*) {
  std::fflush(stdout);
  return EXCEPTION_CONTINUE_SEARCH;
}

struct StdoutSetup {
  StdoutSetup() {
    // Fully buffered for speed; flushed at exit and before a crash report.
    std::setvbuf(stdout, nullptr, _IOFBF, 1 << 16);
    SetUnhandledExceptionFilter(flushBeforeCrash);
  }
};

}  // namespace

void log(const wchar_t* format, ...) {
  static StdoutSetup setup;
  LogState& s = state();
  va_list args;
  va_start(args, format);
  platform::formatInto(s.text, format, args);
  va_end(args);

  s.utf8.clear();
  platform::appendUtf8(s.text, s.utf8);
  s.utf8.push_back('\n');  // text-mode stdout writes CR LF
  std::fwrite(s.utf8.data(), 1, s.utf8.size(), stdout);

  if (s.debug) OutputDebugStringW(s.text.c_str());

  if (s.trace) {
    std::fputws(s.text.c_str(), s.trace);
    std::fputws(L"\n", s.trace);
    std::fflush(s.trace);
  }
}

void setDebugOutput(bool enabled) { state().debug = enabled; }

uint32_t setTraceFile(const std::wstring& path) {
  LogState& s = state();
  if (s.trace) {
    std::fclose(s.trace);
    s.trace = nullptr;
  }
  if (path.empty()) return 0;
  SetLastError(0);
  s.trace = _wfsopen(path.c_str(), L"at, ccs=UTF-8", _SH_DENYWR);
  return s.trace ? 0 : platform::lastErrorOr(2);
}

}  // namespace engine
