#pragma once
// Expansion of %name% references, in time proportional to the text: the
// closing % of every reference is found from one table built per text, an
// index's nested references are expanded where they stand (never copied out
// and scanned again), and nesting is followed with a list of frames instead of
// recursion. An index that can match no element is still scanned, but nothing
// is looked up or copied for it, so nesting that fails at every level stays
// linear too. What a reference stands for comes from an ExpansionSource.
#include <optional>
#include <string>
#include <string_view>

namespace engine {

// A name of the form base[index]: at least 4 characters, ending with `]`, with
// a `[` at position 1 or later and at least one character between the brackets.
struct IndexedName {
  std::wstring_view base;
  std::wstring_view index;  // as written, not yet expanded
};
std::optional<IndexedName> splitIndexedName(std::wstring_view name);

// "%010d" for a decimal index, so numeric indexes sort numerically; other
// index texts are kept as they are.
std::wstring normaliseIndex(std::wstring_view index);

class ExpansionSource {
 public:
  virtual ~ExpansionSource() = default;
  // A plain variable's value; the view must stay valid during the expansion.
  virtual std::optional<std::wstring_view> variable(std::wstring_view name) = 0;
  // Whether the indexed collection `base` exists. An index is expanded only
  // for a collection that exists: for any other its value cannot matter.
  virtual bool hasCollection(std::wstring_view base) = 0;
  // The element of an existing collection under a normalised index.
  virtual std::optional<std::wstring_view> element(std::wstring_view base, const std::wstring& index) = 0;
  // Whether an element of an existing collection has a normalised index that
  // starts with `prefix`.
  virtual bool hasIndexStartingWith(std::wstring_view base, const std::wstring& prefix) = 0;
  // A fresh number for %random%.
  virtual std::wstring random() = 0;
  // "%name%" (the whole reference) looked up in the environment; nothing when
  // that lookup fails.
  virtual std::optional<std::wstring> environment(std::wstring_view reference) = 0;
};

// Expansion, left to right:
// - `%%` is one `%`;
// - a reference runs to the first `%` outside square brackets, so an index may
//   hold references of its own (%list[%i%]%); a `%` that closes nothing stays;
// - a known variable or element gives its value; else `random` (any letter
//   case) a fresh number; else the environment's expansion of the reference;
//   when that fails the text up to the closing `%` stays and that `%` may open
//   the next reference.
std::wstring expandReferences(std::wstring_view text, ExpansionSource& source);

// True when the whole text is a single reference `%name%`.
bool isSingleReference(std::wstring_view text);

}  // namespace engine
