#pragma once
// A file of UTF-8 lines, appended and flushed one by one, without a
// byte-order mark, so each line can be read on its own (JSON Lines).
#include <cstdint>
#include <string_view>
#include <string>

#include "platform/unique_file.h"

namespace platform {

class LineFile {
 public:
  // Opens `path` for appending, creating it; 0 or the open's error code.
  uint32_t open(const std::wstring& path);
  bool isOpen() const { return file_ != nullptr; }
  // The line and "\n", flushed; 0 or the error of the failed write.
  uint32_t writeLine(std::string_view line);

 private:
  UniqueFile file_;
};

}  // namespace platform
