#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/base/functions.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"TraceSetFile: %s"};

}  // namespace

const Parameters& FunctionTraceSetFile::parameters() {
  static const Parameters list = {engine::text<&FunctionTraceSetFile::path_>(L"path", Need::NonEmpty)};
  return list;
}

// A failure stays recorded for later runs of the same element.
void FunctionTraceSetFile::execute() {
  const std::wstring path = expand(path_);
  engine::log(kStart, path.c_str());
  if (const uint32_t error = engine::setTraceFile(path)) fail(error);
  logEnd();
}

const engine::TagDoc FunctionTraceSetFile::doc{
    L"Closes the trace file and opens `path`, expanded when it runs, in its place: lines are appended as UTF-8 (a new file starts with a byte-order mark), and no other program may write to the file while it is open. A `path` that expands to nothing only closes the trace file. Once an element has failed, it reports that error on every later run, even when the file opens then.",
    {kStart, engine::kTraceIncomplete, engine::kErrorEnd.as(L"traceSetFile")},
    L"Error text: the Windows code of the open, e.g. `3` a missing directory, `5` access denied, `32` the file is open for writing elsewhere. After a failure no trace file is open; lines still go to standard output. A trace file that later cannot take a line is closed, and standard output says so once.",
    L"<traceSetFile path=\"%enginedir%update.log\">\n  <onerror><trace value=\"no trace file: %error%\"/></onerror>\n</traceSetFile>"};

}  // namespace api::base
