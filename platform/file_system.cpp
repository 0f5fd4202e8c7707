#include "platform/file_system.h"

#include <windows.h>
#include <shlwapi.h>

#include "platform/directory_listing.h"
#include "platform/changes.h"
#include "platform/fault.h"
#include "platform/injected_error.h"
#include "platform/output_file.h"
#include "platform/path.h"

namespace platform {
namespace {

// 0 after a call that succeeded, else the injected or the call's own error.
uint32_t outcome(BOOL succeeded) { return succeeded ? 0 : GetLastError(); }

// A copy over an existing file, made beside it and moved over it in one step,
// so that a run ended half-way leaves `to` as it was: 0, or an injected error.
// Nothing when there is no old file to keep (a new file is copied directly,
// as fast as before) or the system refused a step (no source, a destination
// in use): the direct copy then meets the refusal and gives its code.
std::optional<uint32_t> copyBeside(const std::wstring& from, const std::wstring& to) {
  if (GetFileAttributesW(to.c_str()) == INVALID_FILE_ATTRIBUTES || samePath(from, to)) return std::nullopt;
  for (unsigned attempt = 1; attempt <= 100; ++attempt) {
    const std::wstring temporary = siblingName(to, attempt);
    if (CopyFileW(from.c_str(), temporary.c_str(), TRUE)) return moveOver(temporary, to, true);
    if (GetLastError() != ERROR_FILE_EXISTS) return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

bool pathExists(const std::wstring& path) { return inspectPath(path).kind != PathKind::Missing; }

std::wstring fullPath(const std::wstring& path) {
  const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  if (size == 0) return path;
  std::wstring full(size, L'\0');
  const DWORD length = GetFullPathNameW(path.c_str(), size, full.data(), nullptr);
  if (length == 0 || length >= size) return path;
  full.resize(length);
  return full;
}

std::wstring extendedPath(const std::wstring& path) {
  if (path.starts_with(L"\\\\?\\")) return path;
  const std::wstring full = fullPath(path);
  if (full.starts_with(L"\\\\?\\") || full.starts_with(L"\\\\.\\")) return full;
  if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + full.substr(2);  // \\server\share
  return L"\\\\?\\" + full;
}

bool samePath(const std::wstring& a, const std::wstring& b) {
  std::wstring first = fullPath(a), second = fullPath(b);
  for (std::wstring* full : {&first, &second})  // "C:\dir\" is "C:\dir"; "C:\" stays
    if (full->size() > 3 && isSeparator(full->back())) full->pop_back();
  return CompareStringOrdinal(first.c_str(), -1, second.c_str(), -1, TRUE) == CSTR_EQUAL;
}

bool isDirectory(const std::wstring& path) { return checkDirectory(path) == 0; }

PathState inspectPath(const std::wstring& path) {
  if (failedOnPurpose(Call::Attributes)) return {GetLastError()};
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES)
    return {0, attributes & FILE_ATTRIBUTE_DIRECTORY ? PathKind::Directory : PathKind::File};
  const DWORD error = GetLastError();
  return {error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? 0 : error};
}

uint32_t checkDirectory(const std::wstring& path) {
  const PathState state = inspectPath(path);
  if (state.error) return state.error;
  return state.kind == PathKind::Directory ? 0 : ERROR_PATH_NOT_FOUND;
}

bool sameRoot(const std::wstring& a, const std::wstring& b) { return PathIsSameRootW(a.c_str(), b.c_str()); }

void clearReadOnly(const std::wstring& path) {
  clearReadOnly(path, failedOnPurpose(Call::Attributes) ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(path.c_str()));
}

void clearReadOnly(const std::wstring& path, uint32_t attributes) {
  if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_READONLY)) return;
  if (failedOnPurpose(Call::AttributeWrite) || whatIf()) return;  // a what-if run describes the change it serves
  SetFileAttributesW(path.c_str(), attributes & ~FILE_ATTRIBUTE_READONLY);
}

uint32_t copyFile(const std::wstring& from, const std::wstring& to, bool failIfExists) {
  if (const uint32_t error = injectedFault(Call::Copy)) return error;
  if (whatIf()) {
    // What the copy itself would refuse first, the what-if run refuses too.
    if (!pathExists(from)) return ERROR_FILE_NOT_FOUND;
    if (failIfExists && pathExists(to)) return ERROR_FILE_EXISTS;
    return wouldChange(Call::Copy, L"copy " + from + L" to " + to + (failIfExists ? L"" : L" (replace)"));
  }
  if (!failIfExists)
    if (const std::optional<uint32_t> copied = copyBeside(from, to)) return noteChange(*copied);
  return noteChange(outcome(CopyFileW(from.c_str(), to.c_str(), failIfExists)));
}

uint32_t moveFile(const std::wstring& from, const std::wstring& to, MoveFlags flags) {
  if (const uint32_t error = injectedFault(Call::Move)) return error;
  DWORD mode = has(flags, MoveFlags::AtRestart) ? MOVEFILE_DELAY_UNTIL_REBOOT : MOVEFILE_WRITE_THROUGH;
  if (has(flags, MoveFlags::AllowCopy)) mode |= MOVEFILE_COPY_ALLOWED;
  if (has(flags, MoveFlags::ReplaceExisting)) mode |= MOVEFILE_REPLACE_EXISTING;
  if (whatIf()) {
    if (!pathExists(from)) return ERROR_FILE_NOT_FOUND;
    if (!has(flags, MoveFlags::ReplaceExisting) && !has(flags, MoveFlags::AtRestart) && pathExists(to))
      return ERROR_ALREADY_EXISTS;
    return wouldChange(Call::Move, L"move " + from + L" to " + to +
                                       (has(flags, MoveFlags::AtRestart) ? L" at the next restart" : L""));
  }
  return noteChange(outcome(MoveFileExW(from.c_str(), to.c_str(), mode)));
}

uint32_t deleteAtRestart(const std::wstring& path) {
  if (const uint32_t error = injectedFault(Call::Move)) return error;
  if (whatIf()) return wouldChange(Call::Move, L"delete " + path + L" at the next restart");
  return noteChange(outcome(MoveFileExW(path.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT)));
}

uint32_t deleteFile(const std::wstring& path, uint32_t attributes) {
  clearReadOnly(path, attributes);
  if (const uint32_t error = injectedFault(Call::Delete)) return error;
  if (whatIf()) return pathExists(path) ? wouldChange(Call::Delete, L"delete " + path) : ERROR_FILE_NOT_FOUND;
  return noteChange(outcome(DeleteFileW(path.c_str())));
}

uint32_t createDirectory(const std::wstring& path) {
  if (failedOnPurpose(Call::CreateDirectory)) return GetLastError();
  if (whatIf()) {
    if (pathExists(path)) return ERROR_ALREADY_EXISTS;
    return wouldChange(Call::CreateDirectory, L"create directory " + path);
  }
  return noteChange(outcome(CreateDirectoryW(path.c_str(), nullptr)));
}

uint32_t createDirectories(const std::wstring& path) {
  uint32_t error = createDirectory(path);
  if (error == ERROR_PATH_NOT_FOUND) {
    const std::wstring parent = parentPath(path);
    if (parent.empty() || parent == path) return error;
    if (const uint32_t parentError = createDirectories(parent)) return parentError;
    error = createDirectory(path);
  }
  if (error != ERROR_ALREADY_EXISTS) return error;
  // An existing directory is what was asked for; a file of that name is not.
  const PathState state = inspectPath(path);
  return state.error ? state.error : state.kind == PathKind::Directory ? 0 : error;
}

uint32_t removeDirectory(const std::wstring& path) {
  if (const uint32_t error = injectedFault(Call::RemoveDirectory)) return error;
  if (whatIf())
    return pathExists(path) ? wouldChange(Call::RemoveDirectory, L"remove directory " + path) : ERROR_FILE_NOT_FOUND;
  const uint32_t error = outcome(RemoveDirectoryW(path.c_str()));
  if (error != ERROR_ACCESS_DENIED) return noteChange(error);
  clearReadOnly(path);
  // The second try is a call of its own.
  if (const uint32_t again = injectedFault(Call::RemoveDirectory)) return again;
  return noteChange(outcome(RemoveDirectoryW(path.c_str())));
}

std::optional<uint64_t> lastWriteTime(const std::wstring& path) {
  const DirectoryListing found(path);
  if (!found.valid()) return std::nullopt;
  return found.lastWriteTime();
}

bool sameLastWriteTime(const std::wstring& a, const std::wstring& b) {
  const auto first = lastWriteTime(a);
  return first && first == lastWriteTime(b);
}

}  // namespace platform
