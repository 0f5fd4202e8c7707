#pragma once
// What the process learns about its surroundings: environment variables, long
// path names, its own path, the current directory, the Windows version.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// The text with %name% references to environment variables replaced
// (unknown names stay as written); nothing when the expansion fails.
std::optional<std::wstring> expandEnvironment(const std::wstring& text);
// The names of the process's environment variables, as its environment block
// lists them; nothing when the block cannot be read.
std::optional<std::vector<std::wstring>> environmentNames();
// The long form of an existing path; nothing when it cannot be had.
std::optional<std::wstring> longPathName(const std::wstring& path);

// The full path of the running program (long paths allowed); empty when unknown.
std::wstring modulePath();
std::wstring currentDirectory();
// The running process's id.
uint32_t processId();

struct OsVersion {
  unsigned major = 0;
  unsigned minor = 0;
  unsigned productType = 0;  // 1: workstation
};
// The real version (not capped by the program's manifest); zeros when unknown.
OsVersion osVersion();

}  // namespace platform
