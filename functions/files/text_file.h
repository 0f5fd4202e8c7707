#pragma once
// A text file a script writes piece by piece, kept in the handle table.
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "engine/handles.h"

namespace api::files {

class TextFile final : public engine::HandleObject {
 public:
  static constexpr engine::HandleKind kind = engine::HandleKind::TextFile;

  // Creates or truncates the file (or appends to it); nullptr when it cannot be opened.
  static std::unique_ptr<TextFile> open(const std::wstring& path, bool append);
  ~TextFile() override;

  // Writes the text as UTF-8, without BOM or added line ends. Like a stream,
  // the file stays failed after one failure (text that is not valid UTF-16,
  // a full disk): false from then on.
  bool write(std::wstring_view text);

 private:
  explicit TextFile(std::FILE* file) : file_(file) {}
  std::FILE* file_;
  bool failed_ = false;
};

}  // namespace api::files
