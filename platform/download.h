#pragma once
// Downloads through the system's URL moniker service.
#include <cstdint>
#include <string>

namespace platform {

// Fetches `url` into a new file beside `file`, blocking until it ends, and
// moves it over `file` only when the service reports success and every byte
// the server announced arrived; otherwise `file` stays as it was. Returns an
// HRESULT: the service's, INET_E_DOWNLOAD_FAILURE for a body cut short,
// INET_E_REDIRECT_FAILED after more than five redirects, or the Windows
// error of the new file or of the move (3: a missing directory, 5: a
// directory or a read-only file). Whatever the server answers counts: an
// HTTP error page (404, 500) arrives as the file's content and S_OK.
int32_t downloadToFile(const std::wstring& url, const std::wstring& file);

}  // namespace platform
