#pragma once
// The log's destinations besides the trace file: standard output and the debugger.
#include <string>
#include <string_view>

namespace platform {

// Buffered for speed; flushed every 100 ms, at exit and before a crash report.
void writeOutput(std::string_view bytes);
// Empties the buffer now.
void flushOutput();
void debugOutput(const std::wstring& text);

}  // namespace platform
