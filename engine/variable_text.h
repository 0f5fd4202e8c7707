#pragma once
// A variable's value. Characters removed from the front are skipped, not moved,
// and the buffer is compacted only once they make up half of it, so a `for`
// loop that takes its items off the front of a long list pays for the items
// it takes, not for the rest of the list.
#include <string>
#include <string_view>

namespace engine {

class VariableText {
 public:
  VariableText() = default;
  VariableText(std::wstring text) : buffer_(std::move(text)) {}

  std::wstring_view view() const { return std::wstring_view(buffer_).substr(start_); }
  size_t size() const { return buffer_.size() - start_; }

  // Removes `count` characters at `from`; both must lie within the text.
  void erase(size_t from, size_t count) {
    if (from > 0) {
      buffer_.erase(start_ + from, count);
      return;
    }
    start_ += count;
    if (start_ * 2 > buffer_.size()) {
      buffer_.erase(0, start_);
      start_ = 0;
    }
  }

 private:
  std::wstring buffer_;
  size_t start_ = 0;
};

}  // namespace engine
