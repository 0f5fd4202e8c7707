#include "functions/files/detail/path_filter.h"

namespace api::files {

bool PathFilter::compile(const std::wstring& include, const std::wstring& exclude) {
  include_.reset();
  exclude_.reset();
  if (!include.empty() && !(include_ = engine::Regex::compile(include))) return false;
  if (!exclude.empty() && !(exclude_ = engine::Regex::compile(exclude))) return false;
  return true;
}

// An expression too complex to decide answers "no": the path is not taken.
bool PathFilter::accepts(const std::wstring& path) const {
  if (exclude_ && exclude_->test(path).value_or(true)) return false;
  return !include_ || include_->test(path).value_or(false);
}

}  // namespace api::files
