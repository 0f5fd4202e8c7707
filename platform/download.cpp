#include "platform/download.h"

#include <windows.h>
#include <urlmon.h>

#include "platform/changes.h"

namespace platform {

int32_t downloadToFile(const std::wstring& url, const std::wstring& file) {
  const HRESULT result = URLDownloadToFileW(nullptr, url.c_str(), file.c_str(), 0, nullptr);
  noteChange(result == S_OK ? 0 : 1);
  return result;
}

}  // namespace platform
