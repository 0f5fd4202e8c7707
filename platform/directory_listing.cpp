#include "platform/directory_listing.h"

#include <windows.h>

#include "platform/injected_error.h"

namespace platform {

struct DirectoryListing::Entry {
  WIN32_FIND_DATAW data{};
};

DirectoryListing::DirectoryListing(const std::wstring& pattern) : entry_(std::make_unique<Entry>()) {
  if (failedOnPurpose(Call::List)) {  // as when the first find fails
    error_ = GetLastError();
    return;
  }
  // The basic information level skips the 8.3 names nobody here reads.
  HANDLE handle = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &entry_->data, FindExSearchNameMatch, nullptr,
                                   FIND_FIRST_EX_LARGE_FETCH);
  if (handle == INVALID_HANDLE_VALUE) error_ = GetLastError();
  handle_.reset(handle);
}

DirectoryListing::~DirectoryListing() = default;

const wchar_t* DirectoryListing::name() const { return entry_->data.cFileName; }
uint32_t DirectoryListing::attributes() const { return entry_->data.dwFileAttributes; }
bool DirectoryListing::isDirectory() const { return (attributes() & FILE_ATTRIBUTE_DIRECTORY) != 0; }
bool DirectoryListing::isReadOnly() const { return (attributes() & FILE_ATTRIBUTE_READONLY) != 0; }
bool DirectoryListing::isLink() const { return (attributes() & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }

bool DirectoryListing::isDots() const {
  const wchar_t* n = name();
  return n[0] == L'.' && (n[1] == 0 || (n[1] == L'.' && n[2] == 0));
}

uint64_t DirectoryListing::lastWriteTime() const {
  const FILETIME& time = entry_->data.ftLastWriteTime;
  return uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

// A step that fails for another reason than the end of the list ends the
// listing too, and leaves that reason in error().
void DirectoryListing::next() {
  if (!failedOnPurpose(Call::List) && FindNextFileW(handle_.get(), &entry_->data)) return;
  if (const DWORD error = GetLastError(); error != ERROR_NO_MORE_FILES) error_ = error;
  handle_.reset();
}

}  // namespace platform
