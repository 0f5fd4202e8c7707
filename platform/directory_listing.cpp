#include "platform/directory_listing.h"

#include "platform/fault.h"

namespace platform {

DirectoryListing::DirectoryListing(const std::wstring& pattern) {
  if (const uint32_t error = injectedFault(Call::List)) {  // as when the first find fails
    SetLastError(error);
    error_ = error;
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
  const uint32_t fault = injectedFault(Call::List);
  if (fault) SetLastError(fault);
  if (!fault && FindNextFileW(handle_.get(), &entry_)) return;
  if (const DWORD error = GetLastError(); error != ERROR_NO_MORE_FILES) error_ = error;
  handle_.reset();
}

}  // namespace platform
