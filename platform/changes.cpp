#include "platform/changes.h"

#include <utility>

namespace platform {
namespace {

struct Changes {
  uint64_t made = 0;
  std::function<void(const std::wstring&)> describe;  // set for a what-if run
  std::map<Call, unsigned> described;
  std::map<const void*, std::wstring> names;
};

Changes& changes() {
  static Changes state;
  return state;
}

}  // namespace

uint32_t noteChange(uint32_t error) {
  if (error == 0) ++changes().made;
  return error;
}

uint64_t changesMade() { return changes().made; }

void beginWhatIf(std::function<void(const std::wstring&)> describe) { changes().describe = std::move(describe); }

bool whatIf() { return static_cast<bool>(changes().describe); }

uint32_t wouldChange(Call call, const std::wstring& what) {
  Changes& state = changes();
  state.describe(what);
  ++state.described[call];
  return noteChange(0);
}

const std::map<Call, unsigned>& changesWouldMake() { return changes().described; }

void nameHandle(const void* handle, const std::wstring& name) {
  if (whatIf() && handle) changes().names[handle] = name;
}

std::wstring handleName(const void* handle) {
  const auto& names = changes().names;
  const auto found = names.find(handle);
  return found == names.end() ? std::wstring(L"(unknown)") : found->second;
}

}  // namespace platform
