#include "engine/log.h"

#include <cstdarg>

#include "engine/run_record.h"
#include "platform/format.h"
#include "platform/output.h"
#include "platform/text.h"
#include "platform/trace_file.h"

namespace engine {
namespace {

struct LogState {
  bool debug = false;
  platform::TraceFile trace;
  std::wstring tracePath;
  // Reused across calls: the log sits on every function's hot path.
  std::wstring text;
  std::string utf8;
};

LogState& state() {
  static LogState instance;
  return instance;
}

}  // namespace

void log(const wchar_t* format, ...) {
  LogState& s = state();
  va_list args;
  va_start(args, format);
  platform::formatInto(s.text, format, args);
  va_end(args);

  s.utf8.clear();
  platform::appendUtf8(s.text, s.utf8);
  s.utf8.push_back('\n');  // text-mode stdout writes CR LF
  platform::writeOutput(s.utf8);

  if (s.debug) platform::debugOutput(s.text);

  // A trace file that cannot take a line is closed, and standard output says
  // once that it ends there: the run goes on.
  if (!s.trace.isOpen()) return;
  if (const uint32_t error = s.trace.writeLine(s.text.c_str())) {
    s.trace.close();
    log(L"Cannot write the trace file '%s'. Error:%d. It is incomplete from this line on", s.tracePath.c_str(),
        static_cast<int>(error));
    recordTraceIncomplete(s.tracePath, error);
  }
}

void logOutOfMemory() {
  LogState& s = state();
  platform::writeOutput("The run ran out of memory\n");
  if (s.trace.isOpen()) s.trace.writeLine(L"The run ran out of memory");
}

void setDebugOutput(bool enabled) { state().debug = enabled; }

void flushLogBeforeWait() { platform::flushOutput(); }

uint32_t setTraceFile(const std::wstring& path) {
  LogState& s = state();
  s.trace.close();
  s.tracePath = path;
  if (path.empty()) return 0;
  return s.trace.open(path);
}

}  // namespace engine
