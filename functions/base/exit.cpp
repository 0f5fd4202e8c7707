#include <cstdlib>

#include "engine/log.h"
#include "engine/run_record.h"
#include "engine/what_if.h"
#include "platform/clock.h"
#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionExit::parameters() {
  static const Parameters list = {engine::integer<&FunctionExit::code_>(L"code", Need::Optional, L"0")};
  return list;
}

void FunctionExit::execute() {
  engine::log(L"Exit function called with exitcode %d", code_);
  handles().closeTextFiles();
  engine::recordFunctionEnd(*this, platform::tickCount(), false);
  engine::summarizeWhatIf();
  engine::recordRunEnd(code_);
  std::exit(code_);  // the runtime flushes and closes open streams, the trace file included
}

const engine::TagDoc FunctionExit::doc{
    L"Ends the script and the process at once with the exit code `code` (default `0`), read as a number when the script is prepared (`-1` works; text without digits is `0`). Nothing after it runs; files open for `fileWrite` are closed and the trace file is flushed and closed.",
    L"Exit function called with exitcode %d",
    L"No result: the process ends.", L"<fileExists path=\"C:\\Program Files\\App\\app.exe\"><onFalse><exit code=\"2\"/></onFalse></fileExists>\n<exit code=\"0\"/>"};

}  // namespace api::base
