#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace api::processes::detail {

// A process name as processWait and processKill search for it: every "\\" is
// collapsed to "\", except that a name starting with "\\" keeps that pair.
std::wstring normaliseProcessName(const std::wstring& name);

// The ids of the processes a normalised name matches. A search that fails
// finds nothing: processWait and processKill then have nothing to do.
std::vector<uint32_t> processesNamed(const std::wstring& name);

}  // namespace api::processes::detail
