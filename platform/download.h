#pragma once
// Downloads through the system's URL moniker service.
#include <cstdint>
#include <string>

namespace platform {

// Fetches `url` into `file` with URLDownloadToFileW, blocking until it ends;
// returns the call's HRESULT. Whatever the server answers is saved: an HTTP
// error page (404, 500) arrives as the file's content and S_OK.
int32_t downloadToFile(const std::wstring& url, const std::wstring& file);

}  // namespace platform
