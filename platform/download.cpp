#include "platform/download.h"

#include <windows.h>
#include <urlmon.h>

namespace platform {

int32_t downloadToFile(const std::wstring& url, const std::wstring& file) {
  return URLDownloadToFileW(nullptr, url.c_str(), file.c_str(), 0, nullptr);
}

}  // namespace platform
