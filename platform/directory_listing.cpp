#include "platform/directory_listing.h"

namespace platform {

DirectoryListing::DirectoryListing(const std::wstring& pattern) {
  // The basic information level skips the 8.3 names nobody here reads.
  HANDLE handle = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &entry_, FindExSearchNameMatch, nullptr,
                                   FIND_FIRST_EX_LARGE_FETCH);
  if (handle == INVALID_HANDLE_VALUE) error_ = GetLastError();
  handle_.reset(handle);
}

uint64_t DirectoryListing::lastWriteTime() const {
  return uint64_t{entry_.ftLastWriteTime.dwHighDateTime} << 32 | entry_.ftLastWriteTime.dwLowDateTime;
}

void DirectoryListing::next() {
  if (!FindNextFileW(handle_.get(), &entry_)) handle_.reset();
}

}  // namespace platform
