#include "engine/expansion.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "engine/ascii.h"
#include "engine/integer.h"

namespace engine {
namespace {

constexpr size_t kNone = std::wstring_view::npos;

int bracketStep(wchar_t c) { return c == L'[' ? 1 : c == L']' ? -1 : 0; }

// For every `%` of a text, the position of the `%` that closes a reference
// opened there. Scanning from an opening `%`, `[` adds one and `]` takes one
// away, and the first `%` met at level 0 closes. With D(i) the count of `[`
// minus the count of `]` before position i, that is the next `%` with the same
// D, which one pass from the right finds for all of them. The answer does not
// depend on where the scanned text starts, so it serves every index inside the
// text too, as long as the close lies within that index.
std::vector<size_t> closingTable(std::wstring_view text) {
  std::vector<size_t> close(text.size(), kNone);
  long depth = 0, lowest = 0, highest = 0;
  for (wchar_t c : text) {
    depth += bracketStep(c);
    lowest = std::min(lowest, depth);
    highest = std::max(highest, depth);
  }
  std::vector<size_t> nextAtDepth(static_cast<size_t>(highest - lowest + 1), kNone);
  for (size_t i = text.size(); i-- > 0;) {
    depth -= bracketStep(text[i]);
    if (text[i] != L'%') continue;
    size_t& next = nextAtDepth[static_cast<size_t>(depth - lowest)];
    close[i] = next;
    next = i;
  }
  return close;
}

// The checks below look at this many characters: the start of an index
// decides whether it can still match, and a file name part this long cannot
// exist (file systems allow 255).
constexpr size_t kPrefix = 256;
// The system expands at least this many characters of a longer text, or fails.
constexpr size_t kSystemMinimum = 30000;

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// Counts of some characters before each position, to count them in any range.
class RangeCount {
 public:
  template <class Pred>
  RangeCount(std::wstring_view text, Pred counts) : before_(text.size() + 1, 0) {
    for (size_t i = 0; i < text.size(); ++i) before_[i + 1] = before_[i] + (counts(text[i]) ? 1 : 0);
  }
  size_t in(size_t from, size_t to) const { return before_[to] - before_[from]; }

 private:
  std::vector<uint32_t> before_;
};

class Expander {
 public:
  // Without brackets a reference closes at the next `%`, so no table is needed.
  Expander(std::wstring_view text, ExpansionSource& source)
      : text_(text),
        close_(text.find_first_of(L"[]") == kNone ? std::vector<size_t>() : closingTable(text)),
        source_(source) {}

  std::wstring run() {
    frames_.push_back(Frame{0, text_.size(), {}, 0, 0, {}, false});
    frames_.back().out.reserve(text_.size());
    for (;;) {
      if (frames_.back().pos < frames_.back().end) {
        advance();
        continue;
      }
      if (frames_.size() == 1) return std::move(frames_.back().out);
      finishIndex();
    }
  }

 private:
  // A range of the text being expanded; for an index, also the reference
  // that waits for it. An index that can match no element is `matchless`: it
  // is still scanned, as every reference in it is looked up the same way, but
  // nothing is copied or asked of the environment for it.
  struct Frame {
    size_t pos, end;
    std::wstring out;
    size_t open = 0, close = 0;
    std::wstring_view base;
    bool matchless = false;
  };

  size_t closeOf(size_t open) const { return close_.empty() ? text_.find(L'%', open + 1) : close_[open]; }

  bool isIndex(const Frame& frame) const { return &frame != &frames_.front(); }

  static void append(Frame& frame, std::wstring_view text) {
    if (!frame.matchless) frame.out.append(text);
  }

  // Expands up to and including the next reference of the innermost frame,
  // or starts a frame for that reference's index.
  void advance() {
    Frame& frame = frames_.back();
    const size_t open = text_.substr(0, frame.end).find(L'%', frame.pos);
    if (open == kNone) {
      append(frame, text_.substr(frame.pos, frame.end - frame.pos));
      frame.pos = frame.end;
      return;
    }
    append(frame, text_.substr(frame.pos, open - frame.pos));
    if (open + 1 < frame.end && text_[open + 1] == L'%') {
      append(frame, L"%");
      frame.pos = open + 2;
      return;
    }
    const size_t close = closeOf(open);
    if (close == kNone || close >= frame.end) {
      append(frame, L"%");
      frame.pos = open + 1;
      return;
    }
    const std::wstring_view name = text_.substr(open + 1, close - open - 1);
    if (const auto indexed = splitIndexedName(name)) {
      if (source_.hasCollection(indexed->base)) {
        const size_t start = static_cast<size_t>(indexed->index.data() - text_.data());
        // The index of a matchless index can only matter to it.
        const bool matchless = frame.matchless;
        frames_.push_back(Frame{start, start + indexed->index.size(), {}, open, close, indexed->base, matchless});
        return;
      }
    } else if (const auto value = source_.variable(name)) {
      append(frame, *value);
      frame.pos = close + 1;
      return;
    }
    unresolved(frame, open, close);
  }

  // The index is expanded: look the element up for the reference that waited.
  void finishIndex() {
    Frame index = std::move(frames_.back());
    frames_.pop_back();
    Frame& owner = frames_.back();
    if (!index.matchless) {
      if (const auto value = source_.element(index.base, normaliseIndex(index.out))) {
        append(owner, *value);
        owner.pos = index.close + 1;
        return;
      }
    }
    unresolved(owner, index.open, index.close);
  }

  void unresolved(Frame& frame, size_t open, size_t close) {
    if (!frame.matchless && isIndex(frame) && provenMatchless(frame, open, close)) frame.matchless = true;
    if (frame.matchless) {
      frame.out.clear();
      frame.pos = close + 1;
      return;
    }
    const std::wstring_view name = text_.substr(open + 1, close - open - 1);
    if (equalsIgnoreAsciiCase(name, L"random")) {
      frame.out.append(source_.random());
      frame.pos = close + 1;
    } else if (const auto expanded = source_.environment(text_.substr(open, close - open + 1))) {
      frame.out.append(*expanded);
      frame.pos = close + 1;
    } else {
      frame.out.append(text_.substr(open, close - open));
      frame.pos = close;
    }
    if (isIndex(frame) && !canStillMatch(frame.base, frame.out)) frame.matchless = true;
  }

  // False when no element's index starts as an index beginning with `start`
  // would (an index of digits only is normalised, so it always may match).
  bool canStillMatch(std::wstring_view base, std::wstring_view start) {
    start = start.substr(0, kPrefix);
    if (std::all_of(start.begin(), start.end(), isDigit)) return true;
    return source_.hasIndexStartingWith(base, std::wstring(start));
  }

  // Whether the index in `frame` matches no element once the reference at
  // open..close, which nothing in the script resolved, has given its text, told
  // without asking the environment about a long reference (which would make
  // nesting that fails at every level quadratic). Such a reference names no
  // environment variable between any two of its %, so the environment gives it
  // back as written (or only its start, or fails and it stays as written); and
  // without a separator and with more than 255 characters that are not dots or
  // spaces it cannot be an existing path. So the index goes on with at least
  // its first kPrefix characters.
  bool provenMatchless(const Frame& frame, size_t open, size_t close) {
    if (close - open <= kPrefix) return false;
    const std::wstring start = frame.out.substr(0, kPrefix) + std::wstring(text_.substr(open, kPrefix));
    if (canStillMatch(frame.base, start)) return false;
    if (!separators_) {
      separators_.emplace(text_, [](wchar_t c) { return c == L'\\' || c == L'/' || c == L':'; });
      nameCharacters_.emplace(text_, [](wchar_t c) { return c != L'.' && c != L' '; });
    }
    if (separators_->in(open, close + 1) > 0) return false;
    if (nameCharacters_->in(open, open + std::min(close - open, kSystemMinimum)) <= 255) return false;
    return !namesVariableBetween(open, close);
  }

  // Whether the text between two consecutive % within open..close (both %)
  // may name an environment variable.
  bool namesVariableBetween(size_t open, size_t close) {
    if (percents_.empty()) {
      for (size_t i = 0; i < text_.size(); ++i)
        if (text_[i] == L'%') percents_.push_back(i);
      std::unordered_map<std::wstring_view, bool> known;
      namingBefore_.assign(percents_.size(), 0);
      for (size_t i = 0; i + 1 < percents_.size(); ++i) {
        const std::wstring_view reference = text_.substr(percents_[i], percents_[i + 1] - percents_[i] + 1);
        auto [it, added] = known.try_emplace(reference.substr(1, reference.size() - 2), false);
        if (added) {
          const auto expanded = source_.environment(reference);
          it->second = !expanded || *expanded != reference;
        }
        namingBefore_[i + 1] = namingBefore_[i] + (it->second ? 1 : 0);
      }
    }
    const size_t first = static_cast<size_t>(std::lower_bound(percents_.begin(), percents_.end(), open) - percents_.begin());
    const size_t last = static_cast<size_t>(std::lower_bound(percents_.begin(), percents_.end(), close) - percents_.begin());
    return namingBefore_[last] != namingBefore_[first];
  }

  std::wstring_view text_;
  std::vector<size_t> close_;
  ExpansionSource& source_;
  std::vector<Frame> frames_;
  // Built on first use, by the checks of long references in indexes.
  std::optional<RangeCount> separators_, nameCharacters_;
  std::vector<size_t> percents_;
  std::vector<uint32_t> namingBefore_;  // segments that may name a variable, before each %
};

}  // namespace

std::optional<IndexedName> splitIndexedName(std::wstring_view name) {
  if (name.size() < 4 || name.back() != L']') return std::nullopt;
  const size_t open = name.find(L'[', 1);
  if (open == kNone || open + 2 > name.size() - 1) return std::nullopt;
  return IndexedName{name.substr(0, open), name.substr(open + 1, name.size() - open - 2)};
}

std::wstring normaliseIndex(std::wstring_view index) {
  if (index.empty() || !std::all_of(index.begin(), index.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; }))
    return std::wstring(index);
  // Only digits: the value is never negative and has at most ten digits.
  const std::wstring digits = std::to_wstring(toInt(index));
  return std::wstring(10 - digits.size(), L'0') + digits;
}

std::wstring expandReferences(std::wstring_view text, ExpansionSource& source) {
  if (text.find(L'%') == kNone) return std::wstring(text);
  return Expander(text, source).run();
}

bool isSingleReference(std::wstring_view text) {
  if (text.size() < 3 || text.front() != L'%' || text[1] == L'%') return false;
  return closingTable(text)[0] == text.size() - 1;
}

}  // namespace engine
