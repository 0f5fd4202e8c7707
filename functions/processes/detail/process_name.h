#pragma once
#include <string>

namespace api::processes::detail {

// A process name as processWait and processKill search for it: every "\\" is
// collapsed to "\", except that a name starting with "\\" keeps that pair.
std::wstring normaliseProcessName(const std::wstring& name);

}  // namespace api::processes::detail
