#pragma once
// The engine's one log call. Every line goes to standard output (UTF-8), to the
// debugger under /debug, and to the trace file when one is open.
#include <cstdint>
#include <string>

namespace engine {

// Formats like the C runtime's wide printf (%s is a wide string).
void log(const wchar_t* format, ...);

void setDebugOutput(bool enabled);

// Closes the current trace file, then opens `path` for appending when it is not
// empty. Returns 0 or the Windows error code of the failed open.
uint32_t setTraceFile(const std::wstring& path);

}  // namespace engine
