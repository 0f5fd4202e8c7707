#include "platform/read_file.h"

#include <windows.h>
#include <io.h>
#include <share.h>

#include "platform/error_text.h"

namespace platform {

uint32_t readWholeFile(const std::wstring& path, std::vector<unsigned char>& bytes) {
  SetLastError(0);
  UniqueFile file(_wfsopen(path.c_str(), L"rb", _SH_DENYWR));
  if (!file) return lastErrorOr(30);
  std::fseek(file.get(), 0, SEEK_END);
  const long length = std::ftell(file.get());
  std::fseek(file.get(), 0, SEEK_SET);
  if (length <= 0) return 1006;
  bytes.resize(static_cast<size_t>(length));
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  return 0;
}

bool readTextFile(const std::wstring& path, std::string& out) {
  UniqueFile file(_wfopen(path.c_str(), L"rt"));
  if (!file) return false;
  out.clear();
  const long long size = _filelengthi64(_fileno(file.get()));
  if (size > 0) out.reserve(static_cast<size_t>(size));
  char buffer[1 << 16];
  size_t got = 0;
  while ((got = std::fread(buffer, 1, sizeof buffer, file.get())) > 0) out.append(buffer, got);
  return true;
}

UniqueFile openForReading(const std::wstring& path) {
  SetLastError(0);
  return UniqueFile(_wfopen(path.c_str(), L"rb"));
}

std::string readHead(std::FILE* file, size_t count) {
  std::string head(count, '\0');
  head.resize(std::fread(head.data(), 1, count, file));
  return head;
}

}  // namespace platform
