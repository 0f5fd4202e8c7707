#pragma once
// The program's main flow: privileges, command line, path check, then encrypt
// a script in place or load, prepare and run one.
#include <map>
#include <string>

#include "engine/registry.h"

namespace engine {

struct CommandLine {
  const wchar_t* scriptPath = nullptr;  // the last /file, /encfile or /encrypt value
  bool decrypt = false;
  bool encrypt = false;
  bool debug = false;
  bool whatIf = false;   // /whatif: changes are described instead of made
  std::wstring jsonLog;  // /jsonlog: the structured record's file; empty for none
  std::map<std::wstring, std::wstring> presets;
};

// False with an error text (possibly empty) when the arguments are not usable.
bool parseCommandLine(int argc, wchar_t** argv, CommandLine& out, std::wstring& error);

// Whether the script path may be run: not UNC, no "..", and an absolute path
// must lie under the program's own directory.
bool checkScriptPath(const std::wstring& path, const std::wstring& programPath, std::wstring& error);

// Exit code of a run that ran out of memory (ERROR_OUTOFMEMORY).
constexpr int kOutOfMemoryExitCode = 14;

// Builds the functions' registry with `makeRegistry` and runs the command
// line; a run that runs out of memory, from the registry on, says so and
// ends with kOutOfMemoryExitCode. Returns the process exit code.
int runProgram(int argc, wchar_t** argv, FunctionRegistry (*makeRegistry)());

}  // namespace engine
