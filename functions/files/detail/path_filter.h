#pragma once
// The include/exclude filter of the recursive copy: whole-path regular
// expression matches on the full source path of each entry.
#include <memory>
#include <string>

#include "engine/regex.h"

namespace api::files {

class PathFilter {
 public:
  // Compiles the expressions (empty text = not set); false when one does not compile.
  bool compile(const std::wstring& include, const std::wstring& exclude);
  // No when `exclude` matches, else yes when `include` is unset or matches.
  // A match that exceeds the matcher's bounds counts as no match.
  bool accepts(const std::wstring& path) const;

 private:
  std::unique_ptr<engine::Regex> include_, exclude_;
};

}  // namespace api::files
