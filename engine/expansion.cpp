#include "engine/expansion.h"

#include <algorithm>
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

class Expander {
 public:
  Expander(std::wstring_view text, ExpansionSource& source)
      : text_(text), close_(closingTable(text)), source_(source) {}

  std::wstring run() {
    frames_.push_back(Frame{0, text_.size(), {}, 0, 0, {}});
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
  // that waits for it.
  struct Frame {
    size_t pos, end;
    std::wstring out;
    size_t open = 0, close = 0;
    std::wstring_view base;
  };

  // Expands up to and including the next reference of the innermost frame,
  // or starts a frame for that reference's index.
  void advance() {
    Frame& frame = frames_.back();
    const size_t open = text_.substr(0, frame.end).find(L'%', frame.pos);
    if (open == kNone) {
      frame.out.append(text_.substr(frame.pos, frame.end - frame.pos));
      frame.pos = frame.end;
      return;
    }
    frame.out.append(text_.substr(frame.pos, open - frame.pos));
    if (open + 1 < frame.end && text_[open + 1] == L'%') {
      frame.out.push_back(L'%');
      frame.pos = open + 2;
      return;
    }
    const size_t close = close_[open];
    if (close == kNone || close >= frame.end) {
      frame.out.push_back(L'%');
      frame.pos = open + 1;
      return;
    }
    const std::wstring_view name = text_.substr(open + 1, close - open - 1);
    if (const auto indexed = splitIndexedName(name)) {
      if (source_.hasCollection(indexed->base)) {
        const size_t start = static_cast<size_t>(indexed->index.data() - text_.data());
        frames_.push_back(Frame{start, start + indexed->index.size(), {}, open, close, indexed->base});
        return;
      }
    } else if (const auto value = source_.variable(name)) {
      frame.out.append(*value);
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
    if (const auto value = source_.element(index.base, normaliseIndex(index.out))) {
      owner.out.append(*value);
      owner.pos = index.close + 1;
      return;
    }
    unresolved(owner, index.open, index.close);
  }

  void unresolved(Frame& frame, size_t open, size_t close) {
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
  }

  std::wstring_view text_;
  std::vector<size_t> close_;
  ExpansionSource& source_;
  std::vector<Frame> frames_;
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
