#pragma once
// The calls that change the machine: file writes, copies, moves and deletes,
// directories, the registry, INI files, services, programs started or ended,
// exports called, downloads.
//
// Each one that succeeds is counted, so the engine can tell whether a function
// changed anything. In a what-if run none of them is made: each is described
// instead (through the describer the engine sets) and counted by kind, and
// the wrapper reports success as the call would have.
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "platform/fault.h"

namespace platform {

// Counts one change when `error` is 0; returns `error`.
uint32_t noteChange(uint32_t error);
uint64_t changesMade();

// Starts a what-if run: from now on changes are passed to `describe` instead of made.
void beginWhatIf(std::function<void(const std::wstring&)> describe);
bool whatIf();
// In a what-if run: describes the change `call` would make, counts it, and
// returns 0 as the call would have.
uint32_t wouldChange(Call call, const std::wstring& what);
// The changes a what-if run described, by kind.
const std::map<Call, unsigned>& changesWouldMake();

// In a what-if run, the registry keys, services and processes opened so far
// are remembered by name, so that a change made through their handle can say
// what it would change. Outside one, nothing is kept.
void nameHandle(const void* handle, const std::wstring& name);
std::wstring handleName(const void* handle);

}  // namespace platform
