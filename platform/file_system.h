#pragma once
// Files and directories: queries, copy, move, delete, directory creation and
// removal, last write times. Every call that changes the disk returns 0 or the
// Windows error code of the failure, and passes through the fault seam.
#include <cstdint>
#include <optional>
#include <string>

#include "platform/flags.h"

namespace platform {

bool pathExists(const std::wstring& path);
// The absolute form of a path (GetFullPathNameW); the path itself when that fails.
std::wstring fullPath(const std::wstring& path);
// The absolute form with the `\\?\` prefix, which the system takes as written:
// it also reaches names that end in a dot or a space (`keep.`, `name `),
// which a plain path loses because the system trims them.
std::wstring extendedPath(const std::wstring& path);
// Whether two paths name the same place: their absolute forms, compared without regard to case.
bool samePath(const std::wstring& a, const std::wstring& b);
enum class PathKind : uint8_t { Missing, File, Directory };
// What `path` names; `error` is set when its attributes could not be read for
// another reason than a name that leads nowhere (5 access denied, say).
struct PathState {
  uint32_t error = 0;
  PathKind kind = PathKind::Missing;
};
PathState inspectPath(const std::wstring& path);
bool isDirectory(const std::wstring& path);
// 0 when `path` is a directory; 3 when it is missing or no directory; else the
// error that kept its attributes from being read.
uint32_t checkDirectory(const std::wstring& path);
// Whether both paths are on the same root (drive or share).
bool sameRoot(const std::wstring& a, const std::wstring& b);

// Clears the read-only attribute of a file or directory that has it, so that
// it can be overwritten or removed. The second form takes attributes already
// known from a listing.
void clearReadOnly(const std::wstring& path);
void clearReadOnly(const std::wstring& path, uint32_t attributes);

// Over an existing file (failIfExists false), copies into a new file beside
// `to` and moves it over `to` in one step, so a run ended half-way never
// leaves the old file partly overwritten; a new file, or a destination the
// system will not replace that way (one in use, say), is copied directly, and
// a failure gives the direct copy's code.
uint32_t copyFile(const std::wstring& from, const std::wstring& to, bool failIfExists);
// What a move may do besides renaming in place. Without AtRestart the move
// is written through to the disk before it returns.
enum class MoveFlags : uint8_t {
  None = 0,
  ReplaceExisting = 1,  // an existing target is replaced (else the move fails)
  AllowCopy = 2,        // a file may be copied to another volume and the source deleted
  AtRestart = 4         // the move is left to the next restart
};
template <>
inline constexpr bool kIsFlagSet<MoveFlags> = true;

uint32_t moveFile(const std::wstring& from, const std::wstring& to, MoveFlags flags);
// Leaves the file to be deleted at the next restart.
uint32_t deleteAtRestart(const std::wstring& path);
// Deletes a file, clearing its read-only attribute (known from a listing) first.
uint32_t deleteFile(const std::wstring& path, uint32_t attributes);

// 183 when the directory already exists.
uint32_t createDirectory(const std::wstring& path);
// Creates `path` and any missing parents: 0 when it exists as a directory
// afterwards, else the code of the first creation that failed.
uint32_t createDirectories(const std::wstring& path);
// Removes an empty directory; one refused with 5 is tried again without its read-only attribute.
uint32_t removeDirectory(const std::wstring& path);

// The last write time in 100 ns units, as the directory entry reports it;
// nothing when the file does not exist.
std::optional<uint64_t> lastWriteTime(const std::wstring& path);
// True when both files exist and were last written at the same time.
bool sameLastWriteTime(const std::wstring& a, const std::wstring& b);

}  // namespace platform
