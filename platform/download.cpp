#include "platform/download.h"

#include <windows.h>
#include <urlmon.h>

#include "platform/fault.h"

namespace platform {

int32_t downloadToFile(const std::wstring& url, const std::wstring& file) {
  // A Windows code fails as the service reports one; an HRESULT is taken as it is.
  if (const uint32_t error = injectedFault(Call::Download))
    return static_cast<int32_t>(error <= 0xFFFF ? HRESULT_FROM_WIN32(error) : error);
  return URLDownloadToFileW(nullptr, url.c_str(), file.c_str(), 0, nullptr);
}

}  // namespace platform
