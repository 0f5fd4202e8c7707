#pragma once
// A deliberately simple expansion to compare the real one against: the rules
// written down directly, rescanning for every closing % and recursing into
// every index. Shared by the unit tests and the expansion fuzz target.
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "engine/ascii.h"
#include "engine/expansion.h"

namespace reference {

// Variables `a` = "A" and `v` = "%a%" (values are never expanded again), a
// collection `c` with c[1] = "1" and c[%] = "pct", `random` always "R", environment
// variable `e` = "E"; the environment fails for names that start with `1` and
// keeps every other unknown name as written.
class FakeSource : public engine::ExpansionSource {
 public:
  std::optional<std::wstring_view> variable(std::wstring_view name) override {
    return find(variables_, std::wstring(name));
  }
  bool hasCollection(std::wstring_view base) override { return base == L"c"; }
  std::optional<std::wstring_view> element(std::wstring_view base, const std::wstring& index) override {
    return hasCollection(base) ? find(elements_, index) : std::nullopt;
  }
  bool hasIndexStartingWith(std::wstring_view base, const std::wstring& prefix) override {
    if (!hasCollection(base)) return false;
    auto it = elements_.lower_bound(prefix);
    return it != elements_.end() && it->first.compare(0, prefix.size(), prefix) == 0;
  }
  std::wstring random() override { return L"R"; }
  std::optional<std::wstring> environment(std::wstring_view reference) override {
    const std::wstring_view name = reference.substr(1, reference.size() - 2);
    if (!name.empty() && name.front() == L'1') return std::nullopt;
    if (name == L"e") return L"E";
    return std::wstring(reference);
  }

 private:
  using Table = std::map<std::wstring, std::wstring>;
  static std::optional<std::wstring_view> find(const Table& table, const std::wstring& key) {
    auto it = table.find(key);
    if (it == table.end()) return std::nullopt;
    return std::wstring_view(it->second);
  }
  Table variables_{{L"a", L"A"}, {L"v", L"%a%"}};
  Table elements_{{L"0000000001", L"1"}, {L"%", L"pct"}};
};

inline std::wstring expand(std::wstring_view text, engine::ExpansionSource& source);

inline std::optional<std::wstring> lookUp(const std::wstring& name, engine::ExpansionSource& source) {
  if (const auto indexed = engine::splitIndexedName(name)) {
    const std::wstring index = engine::normaliseIndex(expand(indexed->index, source));
    if (!source.hasCollection(indexed->base)) return std::nullopt;
    const auto value = source.element(indexed->base, index);
    return value ? std::optional<std::wstring>(*value) : std::nullopt;
  }
  const auto value = source.variable(name);
  return value ? std::optional<std::wstring>(*value) : std::nullopt;
}

inline std::wstring expand(std::wstring_view text, engine::ExpansionSource& source) {
  std::wstring out;
  size_t pos = 0;
  while (pos < text.size()) {
    const size_t open = text.find(L'%', pos);
    if (open == std::wstring_view::npos) {
      out.append(text.substr(pos));
      break;
    }
    out.append(text.substr(pos, open - pos));
    if (open + 1 < text.size() && text[open + 1] == L'%') {
      out.push_back(L'%');
      pos = open + 2;
      continue;
    }
    size_t close = std::wstring_view::npos;
    int depth = 0;
    for (size_t i = open + 1; i < text.size() && close == std::wstring_view::npos; ++i) {
      if (text[i] == L'[') ++depth;
      if (text[i] == L']') --depth;
      if (text[i] == L'%' && depth == 0) close = i;
    }
    if (close == std::wstring_view::npos) {
      out.push_back(L'%');
      pos = open + 1;
      continue;
    }
    const std::wstring name(text.substr(open + 1, close - open - 1));
    if (const auto value = lookUp(name, source)) {
      out.append(*value);
      pos = close + 1;
    } else if (engine::equalsIgnoreAsciiCase(name, L"random")) {
      out.append(source.random());
      pos = close + 1;
    } else if (const auto expanded = source.environment(L"%" + name + L"%")) {
      out.append(*expanded);
      pos = close + 1;
    } else {
      out.append(text.substr(open, close - open));
      pos = close;
    }
  }
  return out;
}

}  // namespace reference
