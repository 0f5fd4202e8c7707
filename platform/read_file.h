#pragma once
// Reading whole files: scripts, JSON documents, and XML documents, which
// TinyXML reads from a C runtime stream itself.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/owned.h"
#include "platform/unique_file.h"

namespace platform {

// A whole file's bytes followed by a zero, for a parser that takes a C string.
class TerminatedFile {
 public:
  // The bytes; text().data()[text().size()] is 0.
  std::string_view text() const { return text_; }

 private:
  friend uint32_t readTerminated(const std::wstring& path, TerminatedFile& out);
  UniqueView view_;
  std::vector<char> read_;
  std::string_view text_;
};

// The whole file, denying writers while it is open: 0 or a Windows error code
// (1006 for an empty file, 30 when the failed open set no error). A file whose
// last page has room for the zero is mapped instead of read: the system fills
// that room with zeros, and a large file is neither copied nor given fresh
// memory page by page.
uint32_t readTerminated(const std::wstring& path, TerminatedFile& out);

// A copy of the whole file, for callers that change the bytes (deciphering,
// enciphering); errors as readTerminated gives them.
uint32_t readWholeFile(const std::wstring& path, std::vector<unsigned char>& bytes);

// The whole file read in text mode (CR LF becomes LF); false when it cannot be opened.
bool readTextFile(const std::wstring& path, std::string& out);

// The file opened for binary reading; empty, with the reason in GetLastError(),
// when it cannot be.
UniqueFile openForReading(const std::wstring& path);

// Up to `count` bytes from the stream's current position.
std::string readHead(std::FILE* file, size_t count);

}  // namespace platform
