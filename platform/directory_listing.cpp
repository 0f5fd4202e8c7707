#include "platform/directory_listing.h"

#include "platform/injected_error.h"

namespace platform {

DirectoryListing::DirectoryListing(const std::wstring& pattern) {
  if (failedOnPurpose(Call::List)) {  // as when the first find fails
    error_ = GetLastError();
    return;
  }
  // The basic information level skips the 8.3 names nobody here reads.
  HANDLE handle = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &entry_, FindExSearchNameMatch, nullptr,
                                   FIND_FIRST_EX_LARGE_FETCH);
  if (handle == INVALID_HANDLE_VALUE) error_ = GetLastError();
  handle_.reset(handle);
}

uint64_t DirectoryListing::lastWriteTime() const {
  return uint64_t{entry_.ftLastWriteTime.dwHighDateTime} << 32 | entry_.ftLastWriteTime.dwLowDateTime;
}

// A step that fails for another reason than the end of the list ends the
// listing too, and leaves that reason in error().
void DirectoryListing::next() {
  if (!failedOnPurpose(Call::List) && FindNextFileW(handle_.get(), &entry_)) return;
  if (const DWORD error = GetLastError(); error != ERROR_NO_MORE_FILES) error_ = error;
  handle_.reset();
}

}  // namespace platform
