#include "engine/log.h"
#include "functions/files/detail/download_error.h"
#include "functions/files/functions.h"
#include "platform/download.h"

namespace api::files {

const Parameters& FunctionFileDownload::parameters() {
  static const Parameters list = {engine::text<&FunctionFileDownload::url_>(L"url", Need::NonEmpty),
                                  engine::text<&FunctionFileDownload::file_>(L"file", Need::NonEmpty)};
  return list;
}

void FunctionFileDownload::execute() {
  clearResult();
  const std::wstring url = expand(url_), file = expand(file_);
  engine::log(L"fileDownload from '%s' to '%s'.", url.c_str(), file.c_str());
  engine::flushLogBeforeWait();
  if (const uint32_t error = downloadError(platform::downloadToFile(url, file))) fail(error);
  // The download ends with the copy's end line, as scripts and their log readers expect.
  logEnd(L"fileCopySingle");
}

}  // namespace api::files
