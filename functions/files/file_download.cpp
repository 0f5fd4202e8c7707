#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/files/detail/download_error.h"
#include "functions/files/functions.h"
#include "platform/download.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"fileDownload from '%s' to '%s'."};

}  // namespace

const Parameters& FunctionFileDownload::parameters() {
  static const Parameters list = {engine::text<&FunctionFileDownload::url_>(L"url", Need::NonEmpty),
                                  engine::text<&FunctionFileDownload::file_>(L"file", Need::NonEmpty)};
  return list;
}

void FunctionFileDownload::execute() {
  clearResult();
  const std::wstring url = expand(url_), file = expand(file_);
  engine::log(kStart, url.c_str(), file.c_str());
  engine::flushLogBeforeWait();
  if (const uint32_t error = downloadError(platform::downloadToFile(url, file))) fail(error);
  // The download ends with the copy's end line, as scripts and their log readers expect.
  logEnd(L"fileCopySingle");
}

const engine::TagDoc FunctionFileDownload::doc{
    L"Fetches `url` into the file `file`, both expanded when it runs, through Windows' URL download service (which may keep a copy in the Internet cache). The data goes to a new file beside `file`, which replaces `file` in one step only when the service reports success and every byte the server announced arrived; otherwise the new file is removed and `file` stays as it was. Success says only that the service finished: an HTTP error page (404, 500) replaces the file and is success, so check the file (`fileIsSigned`, `jsonOpen`). It ends with `fileCopySingle`'s end line.",
    {kStart, engine::kErrorEnd.as(L"fileCopySingle")},
    L"Error text: the low 16 bits of the service's result in decimal, e.g. `8` a refused connection or a body cut short, `20` more than five redirects, `484` an address it cannot parse or an unknown scheme, a Windows code as itself: `3` a missing directory, `5` a `file` that is a directory. A failure whose low 16 bits are 0 counts as success.",
    L"<fileDownload url=\"https://updates.example.com/24.3/setup.exe\" file=\"%TEMP%\\setup.exe\">\n  <onerror><trace value=\"download failed: %error%\"/><exit code=\"1\"/></onerror>\n</fileDownload>"};

}  // namespace api::files
