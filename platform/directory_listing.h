#pragma once
// The entries of a directory that match a wildcard pattern, one at a time:
//   for (DirectoryListing list(pattern); list.valid(); list.next()) use(list.name());
#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/owned.h"

namespace platform {

class DirectoryListing {
 public:
  // When the listing cannot start, error() holds the reason (2: no match, 3: no such directory).
  explicit DirectoryListing(const std::wstring& pattern);

  bool valid() const { return handle_.valid(); }
  uint32_t error() const { return error_; }
  const wchar_t* name() const { return entry_.cFileName; }
  uint32_t attributes() const { return entry_.dwFileAttributes; }
  bool isDirectory() const { return (entry_.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
  bool isReadOnly() const { return (entry_.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0; }
  bool isLink() const { return (entry_.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }
  bool isDots() const {
    const wchar_t* n = entry_.cFileName;
    return n[0] == L'.' && (n[1] == 0 || (n[1] == L'.' && n[2] == 0));
  }
  // In the form lastWriteTime() (file_system.h) gives.
  uint64_t lastWriteTime() const;

  // Moves to the next entry; at the end the listing becomes invalid.
  void next();
  // Ends the listing early (before removing the directory it lists).
  void close() { handle_.reset(); }

 private:
  UniqueFind handle_;
  WIN32_FIND_DATAW entry_{};
  uint32_t error_ = 0;
};

}  // namespace platform
