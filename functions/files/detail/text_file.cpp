#include "functions/files/detail/text_file.h"

#include <new>

#include "engine/log.h"
#include "platform/changes.h"
#include "platform/text.h"

namespace api::files {

std::unique_ptr<TextFile> TextFile::open(const std::wstring& path, bool append) {
  std::unique_ptr<TextFile> file(new TextFile());
  file->path_ = path;
  using Mode = platform::OutputFile::Mode;
  // A what-if run writes nowhere, so it needs no file to move into place.
  if (append || platform::whatIf())
    return file->appended_.open(path, append ? Mode::Append : Mode::Truncate) == 0 ? std::move(file) : nullptr;
  file->replacement_ = std::make_unique<platform::Replacement>();
  return file->replacement_->create(path) == 0 ? std::move(file) : nullptr;
}

TextFile::~TextFile() {
  if (!replacement_ || failed_) return;  // the replacement removes its file as it goes
  // A run that ran out of memory closes its files as it unwinds: an allocation
  // failing here too loses the line, never the run's own end (code 14).
  try {
    if (const uint32_t error = replacement_->putInPlace())
      engine::log(kKeptAsBefore, path_.c_str(), error);
  } catch (const std::bad_alloc&) {
  }
}

bool TextFile::write(std::wstring_view text) {
  if (failed_) return false;
  if (text.empty()) return true;
  // Lone surrogates have no UTF-8 form: refuse them instead of writing U+FFFD.
  const std::optional<std::string> bytes = platform::toUtf8Strict(text);
  failed_ = !bytes || file().write(*bytes) != 0;
  return !failed_;
}

}  // namespace api::files
