#include "platform/download.h"

#include <windows.h>
#include <urlmon.h>

#include "platform/changes.h"
#include "platform/system_library.h"

namespace platform {

int32_t downloadToFile(const std::wstring& url, const std::wstring& file) {
  uint32_t error = 0;
  const auto download = systemFunction<decltype(URLDownloadToFileW)>(L"urlmon.dll", "URLDownloadToFileW", error);
  if (!download) return HRESULT_FROM_WIN32(error);
  const HRESULT result = download(nullptr, url.c_str(), file.c_str(), 0, nullptr);
  noteChange(result == S_OK ? 0 : 1);
  return result;
}

}  // namespace platform
