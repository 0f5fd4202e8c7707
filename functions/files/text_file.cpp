#include "functions/files/text_file.h"

#include <windows.h>
#include <share.h>

namespace api::files {

std::unique_ptr<TextFile> TextFile::open(const std::wstring& path, bool append) {
  std::FILE* file = _wfsopen(path.c_str(), append ? L"ab" : L"wb", _SH_DENYNO);
  if (!file) return nullptr;
  return std::unique_ptr<TextFile>(new TextFile(file));
}

TextFile::~TextFile() { std::fclose(file_); }

bool TextFile::write(std::wstring_view text) {
  if (failed_) return false;
  if (text.empty()) return true;
  const int size = static_cast<int>(text.size());
  // Lone surrogates have no UTF-8 form: refuse them instead of writing U+FFFD.
  const int needed =
      WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(), size, nullptr, 0, nullptr, nullptr);
  if (needed <= 0) {
    failed_ = true;
    return false;
  }
  std::string bytes(static_cast<size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(), size, bytes.data(), needed, nullptr, nullptr);
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) failed_ = true;
  return !failed_;
}

}  // namespace api::files
