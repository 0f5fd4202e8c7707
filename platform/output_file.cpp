#include "platform/output_file.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/changes.h"
#include "platform/fault.h"

namespace platform {
namespace {

// Written one block at a time, so a disk that fills half-way shows in the middle of a file.
constexpr size_t kBlock = 64 * 1024;

uint32_t outcome(BOOL succeeded) { return succeeded ? 0 : GetLastError(); }

LARGE_INTEGER at(int64_t offset) {
  LARGE_INTEGER position;
  position.QuadPart = offset;
  return position;
}

// Opening the target for writing, without changing it, gives the error a
// direct overwrite would have met (5 for a directory or a read-only file, 32
// for a file in use); a missing file is fine.
uint32_t checkWritable(const std::wstring& path) {
  if (const uint32_t error = injectedFault(Call::Attributes)) return error;  // a question, not a change
  UniqueHandle probe(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                 nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (probe.valid()) return 0;
  const uint32_t error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND ? 0 : error;
}

}  // namespace

std::wstring siblingName(const std::wstring& path, unsigned attempt) {
  static const uint64_t started = GetTickCount64();
  return path + L".upkeep-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(started) + L"-" +
         std::to_wstring(attempt) + L".tmp";
}

std::optional<uint32_t> moveOver(const std::wstring& temporary, const std::wstring& target, bool replaceExisting) {
  const uint32_t error = injectedFault(Call::Replace);
  const DWORD flags = (replaceExisting ? MOVEFILE_REPLACE_EXISTING : 0) | MOVEFILE_WRITE_THROUGH;
  if (error == 0 && MoveFileExW(temporary.c_str(), target.c_str(), flags)) return 0;
  removeTemporary(temporary);
  if (error) return error;
  return std::nullopt;
}

void removeTemporary(const std::wstring& temporary) {
  SetFileAttributesW(temporary.c_str(), FILE_ATTRIBUTE_NORMAL);  // a copy of a read-only file is read-only too
  DeleteFileW(temporary.c_str());
}

uint32_t OutputFile::open(const std::wstring& path, Mode mode) {
  if (const uint32_t error = injectedFault(Call::Create)) return error;
  if (whatIf()) {
    // The file takes what is written to it and keeps none of it.
    pretend_ = true;
    return wouldChange(Call::Create, (mode == Mode::Append ? L"append to " : L"write ") + path);
  }
  const DWORD disposition = mode == Mode::Truncate ? CREATE_ALWAYS : mode == Mode::Append ? OPEN_ALWAYS : CREATE_NEW;
  handle_.reset(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
  append_ = mode == Mode::Append;
  return handle_.valid() ? 0 : GetLastError();
}

uint32_t OutputFile::write(std::string_view bytes) {
  if (pretend_) return 0;
  LARGE_INTEGER start;
  if (!SetFilePointerEx(handle_.get(), at(0), &start, append_ ? FILE_END : FILE_CURRENT)) return GetLastError();
  uint32_t error = 0;
  while (!bytes.empty() && error == 0) {
    const DWORD size = static_cast<DWORD>(std::min(bytes.size(), kBlock));
    DWORD written = 0;
    error = injectedFault(Call::Write);
    if (error == 0 && !WriteFile(handle_.get(), bytes.data(), size, &written, nullptr)) error = GetLastError();
    if (error == 0 && written != size) error = ERROR_DISK_FULL;
    bytes.remove_prefix(size);
  }
  if (error != 0 && SetFilePointerEx(handle_.get(), start, nullptr, FILE_BEGIN)) SetEndOfFile(handle_.get());
  return countChanges_ ? noteChange(error) : error;
}

uint32_t OutputFile::flush() {
  if (const uint32_t error = injectedFault(Call::Flush)) return error;
  if (pretend_) return 0;
  return outcome(FlushFileBuffers(handle_.get()));
}

uint32_t OutputFile::close() {
  if (const uint32_t error = injectedFault(Call::Close)) {
    handle_.reset();
    return error;
  }
  if (std::exchange(pretend_, false)) return 0;
  return outcome(CloseHandle(handle_.release()));
}

Replacement::~Replacement() {
  if (name_.empty()) return;
  file_ = OutputFile();  // closed before it can be removed
  DeleteFileW(name_.c_str());
}

uint32_t Replacement::create(const std::wstring& path) {
  if (const uint32_t error = checkWritable(path)) return error;
  target_ = path;
  uint32_t error = ERROR_FILE_EXISTS;
  for (unsigned attempt = 1; error == ERROR_FILE_EXISTS && attempt <= 100; ++attempt) {
    name_ = siblingName(path, attempt);
    error = file_.open(name_, OutputFile::Mode::CreateNew);
  }
  if (error) name_.clear();
  file_.countChanges_ = false;  // only putInPlace changes what the user sees
  return error;
}

uint32_t Replacement::putInPlace() {
  if (file_.isOpen()) {
    if (const uint32_t error = file_.flush()) return error;
    if (const uint32_t error = file_.close()) return error;
  }
  if (const uint32_t error = injectedFault(Call::Replace)) return error;
  if (!MoveFileExW(name_.c_str(), target_.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
    return GetLastError();
  name_.clear();
  return noteChange(0);
}

uint32_t replaceFile(const std::wstring& path, std::string_view bytes) {
  if (whatIf()) {
    if (const uint32_t error = checkWritable(path)) return error;
    return wouldChange(Call::Replace, L"write " + path + L" (" + std::to_wstring(bytes.size()) + L" bytes)");
  }
  Replacement replacement;
  if (const uint32_t error = replacement.create(path)) return error;
  if (const uint32_t error = replacement.file().write(bytes)) return error;
  return replacement.putInPlace();
}

}  // namespace platform
