#include "engine/log.h"

#include <array>
#include <cstdarg>
#include <string>

#include "engine/log_lines.h"
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

void logFormatted(const wchar_t* format, ...) {
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
    log(kTraceIncomplete, s.tracePath.c_str(), static_cast<int>(error));
    recordTraceIncomplete(s.tracePath, error);
  }
}

void logOutOfMemory() {
  // The ASCII line with its line end, made when compiled: writing it allocates nothing.
  static constexpr auto kBytes = [] {
    std::array<char, std::char_traits<wchar_t>::length(kOutOfMemory.format) + 1> bytes{};
    for (size_t i = 0; i + 1 < bytes.size(); ++i) bytes[i] = static_cast<char>(kOutOfMemory.format[i]);
    bytes.back() = '\n';
    return bytes;
  }();
  LogState& s = state();
  platform::writeOutput(std::string_view(kBytes.data(), kBytes.size()));
  if (s.trace.isOpen()) s.trace.writeLine(kOutOfMemory.format);
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
