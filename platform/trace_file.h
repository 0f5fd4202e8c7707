#pragma once
// The trace file: a UTF-8 text file that receives a copy of every log line,
// flushed after each one so it is complete whatever ends the process.
#include <cstdint>
#include <string>

#include "platform/unique_file.h"

namespace platform {

class TraceFile {
 public:
  // Closes the current file, then opens `path` for appending (a new or empty
  // file gets a byte-order mark; another writer is refused). 0 or the open's
  // Windows error code (2 when it set none).
  uint32_t open(const std::wstring& path);
  void close() { file_.reset(); }
  bool isOpen() const { return file_ != nullptr; }
  // The line and a line end, flushed; 0 or the error of the failed write.
  uint32_t writeLine(const wchar_t* line);

 private:
  UniqueFile file_;
};

}  // namespace platform
