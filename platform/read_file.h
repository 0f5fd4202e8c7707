#pragma once
// Reading whole files: scripts, JSON documents, and XML documents, which
// TinyXML reads from a C runtime stream itself.
#include <cstdint>
#include <string>
#include <vector>

#include "platform/unique_file.h"

namespace platform {

// Binary read, denying writers meanwhile: 0 or a Windows error code (1006 for
// an empty file, 30 when the failed open set no error).
uint32_t readWholeFile(const std::wstring& path, std::vector<unsigned char>& bytes);

// The whole file read in text mode (CR LF becomes LF); false when it cannot be opened.
bool readTextFile(const std::wstring& path, std::string& out);

// The file opened for binary reading; empty, with the reason in GetLastError(),
// when it cannot be.
UniqueFile openForReading(const std::wstring& path);

// Up to `count` bytes from the stream's current position.
std::string readHead(std::FILE* file, size_t count);

}  // namespace platform
