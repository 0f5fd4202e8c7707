#pragma once
// Files written through the seam: every write, the flush and the close are
// checked, and a file that replaces another reaches its place only whole.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/owned.h"

namespace platform {

// A file open for writing. Writes go straight to the system (no buffer that a
// later close could fail to empty), so each one's result is final.
class OutputFile {
 public:
  enum class Mode { Truncate, Append, CreateNew };

  // 0 or the error of the open (3: no such directory, 80: CreateNew found a file).
  uint32_t open(const std::wstring& path, Mode mode);
  bool isOpen() const { return handle_.valid() || pretend_; }
  // Writes all the bytes, block by block. When one fails the file is cut back
  // to where it was, so it holds all of them or none.
  uint32_t write(std::string_view bytes);
  // Pushes the written bytes to the disk.
  uint32_t flush();
  uint32_t close();

 private:
  friend class Replacement;

  UniqueHandle handle_;
  bool append_ = false;
  bool countChanges_ = true;  // false for a temporary file that may never reach its place
  bool pretend_ = false;      // opened in a what-if run: takes every write, keeps none
};

// A new file beside `path` that is to take its place only when it is whole:
// the final move stays on one volume and replaces `path` in one step. Until
// then `path` is untouched, and a replacement that is never put in place is
// removed when it goes.
class Replacement {
 public:
  Replacement() = default;
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement();

  // Creates the new file, empty and open in file(). A target that cannot be
  // written at all (a directory, a file in use or read-only) is refused first,
  // with the code its open gives; a missing directory is 3.
  uint32_t create(const std::wstring& path);
  OutputFile& file() { return file_; }
  const std::wstring& name() const { return name_; }
  // Flushes and closes the new file, if still open, and moves it over the
  // target: 0 or the first failing call's error.
  uint32_t putInPlace();

 private:
  OutputFile file_;
  std::wstring target_, name_;
};

// The name of a new file that is to replace `path`: beside it, so the final
// move stays on one volume, and unique to this run (process id and start
// time), so a file left by a run that was killed never stands in its way.
std::wstring siblingName(const std::wstring& path, unsigned attempt);

// Moves `temporary`, a finished file beside `target`, over it in one step
// (with `replaceExisting` false an existing target refuses it): 0, or an
// injected error. Nothing when the system refused the move; the temporary
// file is removed unless it took its place.
std::optional<uint32_t> moveOver(const std::wstring& temporary, const std::wstring& target, bool replaceExisting);

// Removes a temporary file, read-only or not.
void removeTemporary(const std::wstring& temporary);

// Writes `bytes` to a new file beside `path`, flushes and closes it, and only
// then moves it over `path` in one step. On any failure the new file is
// removed and `path` is left as it was. Returns 0 or the failing call's error
// code; a target that cannot be written at all (a directory, a file in use or
// read-only) fails before anything is written, with the code its open gives.
uint32_t replaceFile(const std::wstring& path, std::string_view bytes);

}  // namespace platform
