#pragma once
// The run's structured record (/jsonlog PATH): one JSON object a line, for the
// tools that collect what a script did on many machines. The first line
// starts the run, one line ends each function, the last one ends the run.
#include <cstdint>
#include <string>

namespace engine {

class FunctionBase;

// Opens the record file for appending; 0 or the open's error code. Nothing is
// recorded until a file is open.
uint32_t openRunRecord(const std::wstring& path);
bool recordingRun();

void recordRunStart(const std::wstring& script, bool whatIf);
// A function that has ended (or, for `exit`, is about to end the process);
// `startedMs` is the tick count when it started.
void recordFunctionEnd(const FunctionBase& function, uint32_t startedMs, bool changed);
// The trace file stopped taking lines: it is incomplete from here on.
void recordTraceIncomplete(const std::wstring& path, uint32_t error);
// The run's last line, with the totals of the function lines; later calls do nothing.
void recordRunEnd(int exitCode);

}  // namespace engine
