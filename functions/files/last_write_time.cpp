#include "functions/files/last_write_time.h"

#include "platform/file_system.h"

namespace api::files {

std::optional<FILETIME> lastWriteTime(const std::wstring& path) {
  WIN32_FIND_DATAW data;
  platform::UniqueFind found(FindFirstFileW(path.c_str(), &data));
  if (!found.valid()) return std::nullopt;
  return data.ftLastWriteTime;
}

bool sameLastWriteTime(const std::wstring& a, const std::wstring& b) {
  const auto first = lastWriteTime(a);
  if (!first) return false;
  const auto second = lastWriteTime(b);
  return second && CompareFileTime(&*first, &*second) == 0;
}

}  // namespace api::files
