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

  // Creates or truncates the file (or appends to it); nullptr when it cannot be opened.
  static std::unique_ptr<TextFile> open(const std::wstring& path, bool append);

  // Writes the text as UTF-8, without BOM or added line ends, straight to the
  // file: true means the bytes are there, and a failed write leaves none of
  // its bytes behind. Like a stream, the file stays failed after one failure
  // (text that is not valid UTF-16, a full disk): false from then on.
  bool write(std::wstring_view text);

 private:
  TextFile() = default;
  platform::OutputFile file_;
  bool failed_ = false;
};

}  // namespace api::files
