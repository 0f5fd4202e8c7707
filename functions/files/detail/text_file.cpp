#include "functions/files/detail/text_file.h"

#include "platform/text.h"

namespace api::files {

std::unique_ptr<TextFile> TextFile::open(const std::wstring& path, bool append) {
  std::unique_ptr<TextFile> file(new TextFile());
  using Mode = platform::OutputFile::Mode;
  if (file->file_.open(path, append ? Mode::Append : Mode::Truncate) != 0) return nullptr;
  return file;
}

bool TextFile::write(std::wstring_view text) {
  if (failed_) return false;
  if (text.empty()) return true;
  // Lone surrogates have no UTF-8 form: refuse them instead of writing U+FFFD.
  const std::optional<std::string> bytes = platform::toUtf8Strict(text);
  failed_ = !bytes || file_.write(*bytes) != 0;
  return !failed_;
}

}  // namespace api::files
