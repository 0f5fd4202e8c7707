#include <vector>

#include "engine/log.h"
#include "functions/processes/detail/process_name.h"
#include "functions/processes/functions.h"
#include "platform/processes.h"

namespace api::processes {
namespace {

// Waits for the processes in batches of as many as one wait can take, each
// batch with the whole time-out. A process that cannot be opened (it ended
// meanwhile) counts as done.
uint32_t waitForEach(const std::wstring& name, const std::vector<uint32_t>& ids, uint32_t milliseconds) {
  uint32_t code = 0;
  for (size_t next = 0; code == 0 && next < ids.size();) {
    std::vector<platform::UniqueProcess> batch;
    for (; next < ids.size() && batch.size() < platform::kMaxWaitedProcesses; ++next) {
      uint32_t error = 0;
      platform::UniqueProcess process =
          platform::openProcessNamed(ids[next], name, platform::ProcessAccess::Wait, error);
      if (!process) {
        engine::log(L"Cannot open process with pid %d. Error:%d", ids[next], error);
        continue;
      }
      batch.push_back(std::move(process));
    }
    if (!batch.empty()) code = platform::waitForAll(batch, milliseconds);
  }
  return code;
}

}  // namespace

const Parameters& FunctionProcessWait::parameters() {
  static const Parameters list = {
      engine::text<&FunctionProcessWait::name_>(L"name", Need::NonEmpty),
      engine::integer<&FunctionProcessWait::waitMilliseconds_>(L"waittime", Need::NonEmpty)};
  return list;
}

void FunctionProcessWait::execute() {
  clearResult();
  const std::wstring name = detail::normaliseProcessName(expand(name_));
  engine::log(L"processWait function called for '%s', wait %d ms", name.c_str(), waitMilliseconds_);
  engine::flushLogBeforeWait();
  end(waitForEach(name, detail::processesNamed(name), static_cast<uint32_t>(waitMilliseconds_)));
}

const engine::TagDoc FunctionProcessWait::doc{
    L"Waits until every running process of the name `name` (expanded when it runs) has ended, for at most `waittime` milliseconds (read when the script is prepared; `-1`: no limit); none running is success at once. `name` is a bare file name (`app.exe`, any letter case), which matches every process started from a file of that name, or a full path, which matches only processes started from that very file; doubled backslashes count as one, except a leading `\\\\`. An empty name matches nothing. It waits for up to 64 processes at a time, each group with the whole `waittime`.",
    L"processWait function called for '%s', wait %d ms\nCannot open process with pid %d. Error:%d\nprocessWait function end with %s. err:'%s'",
    L"Error text: `timeout` a process still runs after `waittime`. A process that cannot be opened (it ended meanwhile, or access is denied) is logged and counts as ended.",
    L"<processKill name=\"app.exe\"/>\n<processWait name=\"app.exe\" waittime=\"30000\">\n  <onerrorspec err=\"timeout\"><trace value=\"app.exe did not end\"/><exit code=\"4\"/></onerrorspec>\n</processWait>"};

}  // namespace api::processes
