#pragma once
// The engine's one log call. Every line goes to standard output (UTF-8), to the
// debugger under /debug, and to the trace file when one is open.
#include <cstdint>
#include <string>

namespace engine {

// Formats like the C runtime's wide printf (%s is a wide string).
void log(const wchar_t* format, ...);
// Says that the run ran out of memory, on standard output and in the trace
// file, without allocating anything.
void logOutOfMemory();

void setDebugOutput(bool enabled);

// Puts every line logged so far on standard output (which is otherwise
// written at least every 100 ms). Call it before a function starts to wait
// (sleep, a process or a service, a download), so a run ended during the
// wait shows every line up to it.
void flushLogBeforeWait();

// Closes the current trace file, then opens `path` for appending when it is not
// empty. Returns 0 or the Windows error code of the failed open.
uint32_t setTraceFile(const std::wstring& path);

}  // namespace engine
