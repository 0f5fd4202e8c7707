#include "engine/run_record.h"

#include <chrono>
#include <cstdio>

#include <picojson.h>

#include "engine/function.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/line_file.h"
#include "platform/text.h"

namespace engine {
namespace {

struct Totals {
  unsigned functions = 0, errors = 0, changed = 0;
};

struct RecordState {
  platform::LineFile file;
  Totals totals;
  uint32_t startedMs = 0;
  bool ended = false;
};

RecordState& state() {
  static RecordState s;
  return s;
}

std::string quoted(const std::wstring& text) { return picojson::value(platform::toUtf8(text)).serialize(); }

// UTC in ISO 8601 with milliseconds, as "2026-11-25T08:03:50.123Z".
std::string utcNow() {
  using namespace std::chrono;
  const auto now = floor<milliseconds>(system_clock::now());
  const auto day = floor<days>(now);
  const year_month_day date(day);
  const hh_mm_ss time(now - day);
  char text[32];
  std::snprintf(text, sizeof text, "\"%04d-%02u-%02uT%02d:%02d:%02d.%03dZ\"", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()));
  return text;
}

// A record line's fields in the order written; the values are JSON already.
class Line {
 public:
  explicit Line(const char* event) { text_ = std::string("{\"event\":\"") + event + "\",\"time\":" + utcNow(); }
  Line& field(const char* name, const std::string& json) {
    text_ += std::string(",\"") + name + "\":" + json;
    return *this;
  }
  Line& field(const char* name, long long number) { return field(name, std::to_string(number)); }
  Line& flag(const char* name, bool value) { return field(name, value ? "true" : "false"); }
  void write() {
    // A line the file cannot take is lost there only: the run goes on.
    state().file.writeLine(text_ + "}");
  }

 private:
  std::string text_;
};

uint32_t msSince(uint32_t startedMs) { return platform::tickCount() - startedMs; }

// The attributes as the function used them: the expansion it made of each
// one, or the text as written when it expanded none. Passwords never show.
std::string arguments(const FunctionBase& function) {
  std::string out = "{";
  for (const auto& [name, written] : function.attributes()) {
    if (out.size() > 1) out += ',';
    out += quoted(name) + ':';
    out += name == L"password" ? std::string("\"***\"") : quoted(function.expandedAs(written));
  }
  return out + '}';
}

const char* resultName(const FunctionBase& function) {
  switch (function.kind()) {
    case FunctionKind::Error: return static_cast<const FunctionRetError&>(function).hasError() ? "error" : "success";
    case FunctionKind::Bool: return static_cast<const FunctionRetBool&>(function).getResult() ? "true" : "false";
    case FunctionKind::Plain: break;
  }
  return "done";
}

}  // namespace

uint32_t openRunRecord(const std::wstring& path) {
  RecordState& s = state();
  s.startedMs = platform::tickCount();
  return s.file.open(path);
}

bool recordingRun() { return state().file.isOpen() && !state().ended; }

void recordRunStart(const std::wstring& script, bool whatIf) {
  if (!recordingRun()) return;
  Line("start")
      .field("script", quoted(script))
      .field("version", "\"" UPKEEP_VERSION "\"")
      .flag("whatif", whatIf)
      .field("pid", platform::processId())
      .write();
}

void recordFunctionEnd(const FunctionBase& function, uint32_t startedMs, bool changed) {
  if (!recordingRun()) return;
  const char* result = resultName(function);
  const bool failed = result[0] == 'e';
  const std::optional<std::wstring> id = function.attribute(L"id");
  Totals& totals = state().totals;
  ++totals.functions;
  totals.errors += failed;
  totals.changed += changed;
  Line("function")
      .field("line", function.line())
      .field("tag", quoted(function.name()))
      .field("id", id ? quoted(*id) : "null")
      .field("args", arguments(function))
      .field("result", std::string("\"") + result + '"')
      .field("error", failed ? quoted(static_cast<const FunctionRetError&>(function).getErrorText()) : "null")
      .field("ms", msSince(startedMs))
      .flag("changed", changed)
      .write();
}

void recordTraceIncomplete(const std::wstring& path, uint32_t error) {
  if (!recordingRun()) return;
  Line("trace-incomplete").field("path", quoted(path)).field("error", error).write();
}

void recordRunEnd(int exitCode) {
  if (!recordingRun()) return;
  const Totals& totals = state().totals;
  Line("end")
      .field("exit", exitCode)
      .field("functions", totals.functions)
      .field("errors", totals.errors)
      .field("changed", totals.changed)
      .field("ms", msSince(state().startedMs))
      .write();
  state().ended = true;
}

}  // namespace engine
