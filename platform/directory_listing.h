#pragma once
// The entries of a directory that match a wildcard pattern, one at a time:
//   for (DirectoryListing list(pattern); list.valid(); list.next()) use(list.name());
#include <cstdint>
#include <memory>
#include <string>

#include "platform/owned.h"

namespace platform {

class DirectoryListing {
 public:
  // When the listing cannot start, error() holds the reason (2: no match, 3: no such directory).
  explicit DirectoryListing(const std::wstring& pattern);
  ~DirectoryListing();

  bool valid() const { return handle_.valid(); }
  uint32_t error() const { return error_; }
  const wchar_t* name() const;
  uint32_t attributes() const;
  bool isDirectory() const;
  bool isReadOnly() const;
  bool isLink() const;
  // "." or "..".
  bool isDots() const;
  // In the form lastWriteTime() (file_system.h) gives.
  uint64_t lastWriteTime() const;

  // Moves to the next entry; at the end the listing becomes invalid.
  void next();
  // Ends the listing early (before removing the directory it lists).
  void close() { handle_.reset(); }

 private:
  struct Entry;  // the system's record of the current entry

  UniqueFind handle_;
  std::unique_ptr<Entry> entry_;
  uint32_t error_ = 0;
};

}  // namespace platform
