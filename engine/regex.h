#pragma once
// ECMAScript regular expressions with whole-text matching and bounded
// backtracking: a pathological pattern counts as "no match", never a hang.
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace engine {

class Regex {
 public:
  // nullptr when the pattern does not compile.
  static std::unique_ptr<Regex> compile(const std::wstring& pattern);
  ~Regex();

  // Whole-text match: sub-match 0 is the whole text, then the groups in order
  // of their opening parentheses (empty for a group that took no part).
  // std::nullopt when there is no match or the match exceeded its bounds.
  std::optional<std::vector<std::wstring>> match(const std::wstring& text) const;
  // Whole-text match without groups; std::nullopt when the match exceeded its
  // bounds, so callers can choose what "undecided" means for them.
  std::optional<bool> test(const std::wstring& text) const;

 private:
  struct Impl;
  explicit Regex(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace engine
