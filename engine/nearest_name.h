#pragma once
// "Did you mean …?": the known name closest to a misspelt one.
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace engine {

// The candidate nearest to `name` by edit distance (letter case counts as
// half an edit), when it is close enough to be a slip: at most two edits, and
// fewer edits than half the name's letters. Nothing when none is.
std::optional<std::wstring_view> nearestName(std::wstring_view name, std::span<const std::wstring_view> candidates);

// " did you mean `name`?" for the nearest candidate, or "".
std::wstring didYouMean(std::wstring_view name, std::span<const std::wstring_view> candidates);

}  // namespace engine
