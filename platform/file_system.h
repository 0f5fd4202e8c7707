#pragma once
// Owners for find and file handles, directory listing and path joining, for
// the functions that walk and change the file system.
#include <windows.h>

#include <string>
#include <string_view>

#include "platform/owned.h"

namespace platform {

// The entries matching a FindFirstFileW pattern, one at a time:
//   for (DirectoryListing list(pattern); list.valid(); list.next()) use(list.entry());
// When the listing cannot start, error() holds GetLastError() of that attempt.
class DirectoryListing {
 public:
  explicit DirectoryListing(const std::wstring& pattern) {
    // The basic information level skips the 8.3 names nobody here reads.
    HANDLE handle = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &entry_, FindExSearchNameMatch, nullptr,
                                     FIND_FIRST_EX_LARGE_FETCH);
    if (handle == INVALID_HANDLE_VALUE) error_ = GetLastError();
    handle_.reset(handle);
  }
  bool valid() const { return handle_.valid(); }
  DWORD error() const { return error_; }
  const WIN32_FIND_DATAW& entry() const { return entry_; }
  const wchar_t* name() const { return entry_.cFileName; }
  bool isDirectory() const { return (entry_.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
  bool isDots() const {
    const wchar_t* n = entry_.cFileName;
    return n[0] == L'.' && (n[1] == 0 || (n[1] == L'.' && n[2] == 0));
  }
  // Moves to the next entry; at the end the listing becomes invalid.
  void next() {
    if (!FindNextFileW(handle_.get(), &entry_)) handle_.reset();
  }
  // Ends the listing early (before removing the directory it lists).
  void close() { handle_.reset(); }

 private:
  UniqueFind handle_;
  WIN32_FIND_DATAW entry_{};
  DWORD error_ = 0;
};

inline bool isSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

// left + "\" + right, without doubling a separator at the seam.
inline std::wstring joinPath(std::wstring_view left, std::wstring_view right) {
  while (!right.empty() && isSeparator(right.front())) right.remove_prefix(1);
  std::wstring out;
  out.reserve(left.size() + right.size() + 1);
  out.append(left);
  if (out.empty() || !isSeparator(out.back())) out.push_back(L'\\');
  out.append(right);
  return out;
}

// The path without its last component ("" when there is none).
inline std::wstring parentPath(const std::wstring& path) {
  const size_t cut = path.find_last_of(L"\\/");
  return cut == std::wstring::npos ? std::wstring() : path.substr(0, cut);
}

// Creates `path` and any missing parents; true when it exists as a directory afterwards.
inline bool createDirectories(const std::wstring& path) {
  if (CreateDirectoryW(path.c_str(), nullptr)) return true;
  DWORD error = GetLastError();
  if (error == ERROR_PATH_NOT_FOUND) {
    const std::wstring parent = parentPath(path);
    if (parent.empty() || parent == path || !createDirectories(parent)) return false;
    if (CreateDirectoryW(path.c_str(), nullptr)) return true;
    error = GetLastError();
  }
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return error == ERROR_ALREADY_EXISTS && attributes != INVALID_FILE_ATTRIBUTES &&
         (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace platform
