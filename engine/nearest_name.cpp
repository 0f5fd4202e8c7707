#include "engine/nearest_name.h"

#include <algorithm>
#include <vector>

#include "engine/ascii.h"

namespace engine {
namespace {

// Levenshtein distance in half steps: 2 for an insertion, deletion or other
// letter, 1 for the same letter in another case.
size_t halfSteps(std::wstring_view a, std::wstring_view b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = 2 * j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = 2 * i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t change = a[i - 1] == b[j - 1] ? 0 : asciiLower(a[i - 1]) == asciiLower(b[j - 1]) ? 1 : 2;
      const size_t best = std::min({row[j] + 2, row[j - 1] + 2, diagonal + change});
      diagonal = row[j];
      row[j] = best;
    }
  }
  return row[b.size()];
}

}  // namespace

std::optional<std::wstring_view> nearestName(std::wstring_view name, std::span<const std::wstring_view> candidates) {
  // At most two edits, and fewer than half the name's letters.
  size_t bestSteps = std::min<size_t>(5, name.size());
  std::optional<std::wstring_view> best;
  for (std::wstring_view candidate : candidates) {
    const size_t steps = halfSteps(name, candidate);
    if (steps > 0 && steps < bestSteps) {
      best = candidate;
      bestSteps = steps;
    }
  }
  return best;
}

std::wstring didYouMean(std::wstring_view name, std::span<const std::wstring_view> candidates) {
  const std::optional<std::wstring_view> nearest = nearestName(name, candidates);
  return nearest ? L"did you mean `" + std::wstring(*nearest) + L"`?" : std::wstring();
}

}  // namespace engine
