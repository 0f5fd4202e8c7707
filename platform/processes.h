#pragma once
// Processes: starting a program, finding running ones by name, waiting for
// them and ending them, and the process's own working directory. Every call
// returns 0 or the Windows error code of the failure.
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/owned.h"

namespace platform {

// The buffer the command line is passed in, and the longest line Windows
// accepts (32,766 characters and the NUL).
constexpr size_t kCommandLineCapacity = 32768;
constexpr size_t kCommandLineLimit = 32767;

// Starts `commandLine` without a window, in `directory` (empty: the current
// one). When `waitMilliseconds` is not 0, waits that long for it to end and
// returns what the wait returned (258 when time ran out; the program keeps
// running). A line longer than Windows accepts is refused with 206 (Wine
// would cut it short instead).
uint32_t runProcess(const std::wstring& commandLine, const std::wstring& directory, uint32_t waitMilliseconds);

// The ids of running processes, in snapshot order, whose executable is `name`:
// a name without "\" is compared with the executable's file name, a path with
// the full path of the process's first module, both ignoring case. A process
// whose modules cannot be read does not match, nor one whose name is not known
// yet, so an empty name finds nothing. Returns 0 or the error that
// stopped the search.
uint32_t findProcesses(const std::wstring& name, std::vector<uint32_t>& ids);

// What a process is opened for: waiting until it ends, or ending it.
enum class ProcessAccess : uint8_t { Wait, Terminate };

// The process with that id, found by `findProcesses(name)`, opened for
// `access`; when it cannot be opened the owner is empty and `error` holds why.
// An id that has passed to a process of another executable since the search
// is refused with 87, as an id whose process has gone.
UniqueProcess openProcessNamed(uint32_t id, const std::wstring& name, ProcessAccess access, uint32_t& error);

// The most processes one wait can take.
constexpr size_t kMaxWaitedProcesses = 64;
// Waits until all processes (at most kMaxWaitedProcesses) have ended: 0, else
// what the wait returned (258 when time ran out).
uint32_t waitForAll(std::span<const UniqueProcess> processes, uint32_t milliseconds);

// Ends a process with `exitCode` without waiting for it to go.
uint32_t terminateProcess(const UniqueProcess& process, uint32_t exitCode = 0);

uint32_t setCurrentDirectory(const std::wstring& path);

}  // namespace platform
