#include "engine/what_if.h"

#include <string>

#include "engine/log.h"
#include "platform/changes.h"
#include "platform/text.h"

namespace engine {

void beginWhatIf() {
  platform::beginWhatIf([](const std::wstring& what) { log(L"What if: %s", what.c_str()); });
}

void summarizeWhatIf() {
  if (!platform::whatIf()) return;
  unsigned total = 0;
  for (const auto& [call, count] : platform::changesWouldMake()) total += count;
  log(L"What if: %u %s", total, total == 1 ? L"change" : L"changes");
  for (const auto& [call, count] : platform::changesWouldMake())
    log(L"What if: %s %u", platform::fromUtf8(platform::callName(call)).c_str(), count);
}

}  // namespace engine
