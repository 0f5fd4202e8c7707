#include "platform/read_file.h"

#include <algorithm>

#include <windows.h>
#include <io.h>
#include <share.h>

#include "platform/error_text.h"
#include "platform/injected_error.h"

namespace platform {
namespace {

// _wfsopen, or the fault seam failing it as the open itself would: no file,
// the reason in GetLastError().
UniqueFile openFile(const std::wstring& path, const wchar_t* mode, int share) {
  SetLastError(0);
  if (failedOnPurpose(Call::Open)) return nullptr;
  return UniqueFile(_wfsopen(path.c_str(), mode, share));
}

}  // namespace

uint32_t readWholeFile(const std::wstring& path, std::vector<unsigned char>& bytes) {
  TerminatedFile file;
  if (const uint32_t error = readTerminated(path, file)) return error;
  bytes.reserve(file.text().size() + 1);  // room for the zero a parser ends text with
  bytes.assign(file.text().begin(), file.text().end());
  return 0;
}

uint32_t readTerminated(const std::wstring& path, TerminatedFile& out) {
  SetLastError(0);
  if (failedOnPurpose(Call::Open)) return lastErrorOr(30);
  const UniqueHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return lastErrorOr(30);
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(file.get(), &size)) return lastErrorOr(ERROR_READ_FAULT);
  if (size.QuadPart <= 0) return 1006;
  if (failedOnPurpose(Call::Read)) return lastErrorOr(ERROR_READ_FAULT);
  const auto length = static_cast<size_t>(size.QuadPart);
  SYSTEM_INFO system;
  GetSystemInfo(&system);
  if (length % system.dwPageSize != 0) {
    const UniqueHandle mapping(CreateFileMappingW(file.get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    if (!mapping) return lastErrorOr(ERROR_READ_FAULT);
    out.view_.reset(MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0));
    if (!out.view_) return lastErrorOr(ERROR_READ_FAULT);
    out.text_ = std::string_view(static_cast<const char*>(out.view_.get()), length);
    return 0;
  }
  out.read_.assign(length + 1, '\0');
  size_t done = 0;
  for (DWORD got = 0; done < length; done += got) {
    const auto block = static_cast<DWORD>(std::min<size_t>(length - done, size_t{1} << 30));
    if (!ReadFile(file.get(), out.read_.data() + done, block, &got, nullptr)) return lastErrorOr(ERROR_READ_FAULT);
    if (got == 0) break;
  }
  out.text_ = std::string_view(out.read_.data(), done);
  return 0;
}

bool readTextFile(const std::wstring& path, std::string& out) {
  UniqueFile file = openFile(path, L"rt", _SH_DENYNO);
  if (!file) return false;
  out.clear();
  const long long size = _filelengthi64(_fileno(file.get()));
  if (size > 0) out.reserve(static_cast<size_t>(size));
  char buffer[1 << 16];
  for (;;) {
    if (failedOnPurpose(Call::Read)) return false;
    const size_t got = std::fread(buffer, 1, sizeof buffer, file.get());
    if (got == 0) break;
    out.append(buffer, got);
  }
  return !std::ferror(file.get());
}

UniqueFile openForReading(const std::wstring& path) { return openFile(path, L"rb", _SH_DENYNO); }

std::string readHead(std::FILE* file, size_t count) {
  if (failedOnPurpose(Call::Read)) return {};
  std::string head(count, '\0');
  head.resize(std::fread(head.data(), 1, count, file));
  return head;
}

}  // namespace platform
