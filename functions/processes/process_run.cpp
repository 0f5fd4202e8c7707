#include "engine/log.h"
#include "functions/processes/functions.h"
#include "platform/processes.h"

namespace api::processes {

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
  engine::log(L"processRun function called for '%s' '%s', after wait for %d ms, working-dir as '%s'", path.c_str(),
              arguments.c_str(), waitMilliseconds_, directory.c_str());
  // The blank stays when there are no arguments: programs have always seen it.
  const std::wstring commandLine = L'"' + path + L"\" " + arguments;
  engine::flushLogBeforeWait();
  end(platform::runProcess(commandLine, directory, static_cast<uint32_t>(waitMilliseconds_)));
}

}  // namespace api::processes
