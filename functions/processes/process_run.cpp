#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/processes/functions.h"
#include "platform/processes.h"

namespace api::processes {

namespace {

constexpr engine::LogLine kStart{
    L"processRun function called for '%s' '%s', after wait for %d ms, working-dir as '%s'"};

}  // namespace

const Parameters& FunctionProcessStart::parameters() {
  static const Parameters list = {
      engine::text<&FunctionProcessStart::path_>(L"path", Need::NonEmpty),
      engine::text<&FunctionProcessStart::directory_>(L"wkdir", Need::Optional),
      engine::text<&FunctionProcessStart::arguments_>(L"args", Need::Optional),
      engine::integer<&FunctionProcessStart::waitMilliseconds_>(L"waittime", Need::Optional, L"0")};
  return list;
}

// Starts the program and, with a waittime, waits for it; its exit code is not
// read, and a program still running when the time is up keeps running.
void FunctionProcessStart::execute() {
  clearResult();
  const std::wstring path = expand(path_), arguments = expand(arguments_), directory = expand(directory_);
  engine::log(kStart, path.c_str(), arguments.c_str(), waitMilliseconds_, directory.c_str());
  // The blank stays when there are no arguments: programs have always seen it.
  const std::wstring commandLine = L'"' + path + L"\" " + arguments;
  engine::flushLogBeforeWait();
  endWith(platform::runProcess(commandLine, directory, static_cast<uint32_t>(waitMilliseconds_)));
}

const engine::TagDoc FunctionProcessStart::doc{
    L"Starts the program `path` as `\"path\" args` (the path in double quotes, one blank, then `args` exactly as written: quote arguments with blanks yourself) without a window, in `wkdir` (default: the current directory); all three are expanded when it runs. With a `waittime` in milliseconds (read when the script is prepared; default `0`: no wait; `-1`: no limit) it waits for the program to end, but does not read its exit code, and a program still running when the time is up is left running. The program runs as the interpreter's own user, also under `processImpersonateUser`.",
    {kStart, engine::kErrorEnd.as(L"processRun")},
    L"Error text: `timeout` the program still runs after `waittime`; `2` a missing program, `193` a file that is no program, `267` a `wkdir` that is no directory, `206` a command line longer than 32,766 characters, or another Windows code of the start.",
    L"<processRun path=\"%enginedir%setup.exe\" args='/quiet /log \"%TEMP%\\setup log.txt\"' waittime=\"600000\">\n  <onerrorspec err=\"timeout\"><processKill name=\"%enginedir%setup.exe\"/></onerrorspec>\n</processRun>"};

}  // namespace api::processes
