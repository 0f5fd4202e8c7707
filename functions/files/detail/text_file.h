#pragma once
// A text file a script writes piece by piece, kept in the handle table.
#include <memory>
#include <string>
#include <string_view>

#include "engine/handles.h"
#include "platform/output_file.h"

namespace api::files {

class TextFile final : public engine::HandleObject {
 public:
  static constexpr engine::HandleKind kind = engine::HandleKind::TextFile;

  // Opens the file for appending, or starts its new content in a file beside
  // it that takes its place when the handle is closed; nullptr when it cannot
  // be written.
  static std::unique_ptr<TextFile> open(const std::wstring& path, bool append);
  // Puts new content in place, whole, or leaves the old file as it was when a
  // write failed or the move is refused (said on a line of its own).
  ~TextFile() override;

  // Writes the text as UTF-8, without BOM or added line ends: true means the
  // bytes are on the disk, and a failed write leaves none of its bytes behind.
  // Like a stream, the file stays failed after one failure (text that is not
  // valid UTF-16, a full disk): false from then on.
  bool write(std::wstring_view text);

 private:
  TextFile() = default;
  platform::OutputFile& file() { return replacement_ ? replacement_->file() : appended_; }

  std::wstring path_;
  platform::OutputFile appended_;
  std::unique_ptr<platform::Replacement> replacement_;  // new content, when not appending
  bool failed_ = false;
};

}  // namespace api::files
