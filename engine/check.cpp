#include "engine/check.h"

#include <algorithm>
#include <optional>
#include <cstring>
#include <string_view>
#include <unordered_set>

#include <tinyxml.h>

#include "engine/ascii.h"
#include "engine/check_risks.h"
#include "engine/expansion.h"
#include "engine/loops.h"
#include "engine/nearest_name.h"
#include "engine/script_file.h"
#include "platform/environment.h"
#include "platform/format.h"
#include "platform/text.h"

namespace engine {
namespace {

std::wstring wide(const char* utf8) { return scriptString(utf8); }

// Collects what preparation reports, with its place, and lets it go on.
class Collector final : public Diagnostics {
 public:
  explicit Collector(std::vector<Finding>& findings) : findings_(findings) {}

  bool report(Severity severity, const TiXmlBase* where, const std::wstring& message,
              const std::wstring& detail) override {
    add(severity, where, detail.empty() ? message : message + L": " + detail);
    return true;
  }
  bool checkOnly() const override { return true; }

  void add(Severity severity, const TiXmlBase* where, std::wstring text) {
    const bool placed = where && where->Row() > 0;
    findings_.push_back({placed ? where->Row() : 0, placed ? where->Column() : 0, severity, std::move(text)});
  }

 private:
  std::vector<Finding>& findings_;
};

// Records the names an expansion looks up, resolving none of them, so that
// the text is scanned exactly as a run scans it.
class ReferenceRecorder final : public ExpansionSource {
 public:
  std::vector<std::wstring> names;

  std::optional<std::wstring_view> variable(std::wstring_view name) override {
    names.emplace_back(name);
    return std::nullopt;
  }
  bool hasCollection(std::wstring_view) override { return true; }
  std::optional<std::wstring_view> element(std::wstring_view, const std::wstring&) override { return std::nullopt; }
  bool hasIndexStartingWith(std::wstring_view, const std::wstring&) override { return false; }
  std::wstring random() override { return L"0"; }
  std::optional<std::wstring> environment(std::wstring_view reference) override { return std::wstring(reference); }
};

const Parameter* findParameter(const Tag& tag, std::string_view name) {
  for (const Parameter& p : tag.parameters())
    if (isAsciiName(name, p.name)) return &p;
  return nullptr;
}

bool isHandler(std::string_view name, FunctionKind kind) {
  for (const wchar_t* handler : handlerNames(kind))
    if (isAsciiName(name, handler)) return true;
  return false;
}

std::wstring suggestedAttribute(const Tag& tag, const std::wstring& name) {
  std::vector<std::wstring_view> names = {L"id"};
  for (const Parameter& p : tag.parameters()) names.push_back(p.name);
  return didYouMean(name, names);
}

bool isBuiltIn(std::wstring_view name) {
  static constexpr std::wstring_view builtIn[] = {L"currentdir", L"enginefname", L"enginedir",
                                                  L"arch",       L"os",          L"error"};
  return std::find(std::begin(builtIn), std::end(builtIn), name) != std::end(builtIn) ||
         equalsIgnoreAsciiCase(name, L"random");
}

// The environment's variable names, read once, so that most names that are
// no variable there need no lookup each. Only ASCII names are compared here
// (case-insensitively, as the environment does); any other name is looked up.
class EnvironmentNames {
 public:
  EnvironmentNames() {
    const std::optional<std::vector<std::wstring>> names = platform::environmentNames();
    if (!names) return;
    for (const std::wstring& name : *names) {
      if (!isAscii(name)) return;
      lowered_.insert(lowered(name));
    }
    complete_ = true;
  }
  // A name with '%' or '=' may mean more than one variable: it is looked up.
  bool surelyLacks(const std::wstring& name) const {
    return complete_ && !name.empty() && isAscii(name) && name.find_first_of(L"%=") == std::wstring::npos &&
           !lowered_.count(lowered(name));
  }

 private:
  static bool isAscii(const std::wstring& name) {
    return std::all_of(name.begin(), name.end(), [](wchar_t c) { return c < 0x80; });
  }
  static std::wstring lowered(std::wstring name) {
    for (wchar_t& c : name) c = asciiLower(c);
    return name;
  }
  std::unordered_set<std::wstring> lowered_;
  bool complete_ = false;
};

// Where each name is used, gathered in any order; a name's first use in the
// file is the one reported. Kept as a list and sorted once: a script may use
// tens of thousands of names.
template <typename Name>
class FirstUses {
 public:
  void add(Name name, const TiXmlElement& where) { uses_.emplace_back(std::move(name), &where); }

  // Each name once, in the order of the names, with its first use.
  const std::vector<std::pair<Name, const TiXmlElement*>>& firsts() {
    std::stable_sort(uses_.begin(), uses_.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    size_t kept = 0;
    for (auto& use : uses_) {
      if (kept > 0 && uses_[kept - 1].first == use.first) {
        if (before(*use.second, *uses_[kept - 1].second)) uses_[kept - 1].second = use.second;
        continue;
      }
      if (&uses_[kept] != &use) uses_[kept] = std::move(use);
      ++kept;
    }
    uses_.resize(kept);
    return uses_;
  }

 private:
  static bool before(const TiXmlElement& a, const TiXmlElement& b) {
    return a.Row() != b.Row() ? a.Row() < b.Row() : a.Column() < b.Column();
  }
  std::vector<std::pair<Name, const TiXmlElement*>> uses_;
};

// Names as the script writes them, gathered first and then asked about. Each
// is hashed when it is added, while its text is at hand; the list is then
// sorted by hash, so a question compares texts only of names with its hash.
class NameSet {
 public:
  void add(std::string_view name) { names_.push_back({hash(name), name}); }
  void seal() {
    std::sort(names_.begin(), names_.end(), [](const Entry& a, const Entry& b) { return a.hash < b.hash; });
  }
  bool contains(std::string_view name) const {
    const size_t wanted = hash(name);
    auto it = std::lower_bound(names_.begin(), names_.end(), wanted,
                               [](const Entry& entry, size_t value) { return entry.hash < value; });
    for (; it != names_.end() && it->hash == wanted; ++it)
      if (it->name == name) return true;
    return false;
  }

 private:
  struct Entry {
    size_t hash;
    std::string_view name;
  };
  static size_t hash(std::string_view name) { return std::hash<std::string_view>{}(name); }
  std::vector<Entry> names_;
};

std::wstring handlerList(FunctionKind kind) {
  std::wstring list;
  for (const wchar_t* name : handlerNames(kind)) list += (list.empty() ? L"" : L", ") + std::wstring(name);
  return list.empty() ? L"it takes no handlers" : L"it takes " + list;
}

// What preparation does not look at: the children and attributes it ignores,
// and where variables and handles are set and used across the script.
class Walker {
 public:
  Walker(const FunctionRegistry& registry, Collector& out) : registry_(registry), out_(out) {}

  // Visits every element in a function's place in the order of the file, so
  // that each name's first use is the one reported. Without recursion (scripts
  // may be nested as deep as the parser allows) and without listing a level's
  // elements ahead: each is read once, when it is visited, so a long list is
  // not brought into memory twice.
  void walk(const TiXmlElement& root) {
    noteReads(root, root.Attribute("log"));
    Lists lists{root.FirstChildElement()};
    while (!lists.empty()) {
      const TiXmlElement* element = lists.back();
      if (!element) {
        lists.pop_back();
        continue;
      }
      lists.back() = element->NextSiblingElement();
      visit(*element, lists);
    }
  }

  void warn(const Presets& presets) {
    const EnvironmentNames environment;
    assigned_.seal();
    opened_.seal();
    for (const auto& [name, where] : reads_.firsts()) {
      if (assigned_.contains(platform::toUtf8(name)) || presets.count(name) || isBuiltIn(name)) continue;
      if (!environment.surelyLacks(name) && isProvidedVariable(name)) continue;
      out_.add(Severity::Warning, where, L"Variable '" + name + L"' is read but never assigned");
    }
    for (const auto& [name, where] : handlesUsed_.firsts()) {
      if (opened_.contains(name)) continue;
      out_.add(Severity::Warning, where, L"Handle '" + platform::fromUtf8(name) + L"' is used but never opened");
    }
  }

 private:
  // The next element to visit in each list entered; the last list is visited first.
  using Lists = std::vector<const TiXmlElement*>;

  void visit(const TiXmlElement& element, Lists& lists) {
    const std::string_view name = element.ValueStr();
    if (const Loop* loop = findLoop(name)) {
      for (const Parameter& p : loop->parameters)
        if (const char* value = element.Attribute(platform::toUtf8(p.name).c_str())) noteAttribute(p, element, value);
      lists.push_back(element.FirstChildElement());
      return;
    }
    // An unknown tag is preparation's to report.
    const Tag* tag = registry_.lookup(name);
    if (!tag) return;
    std::vector<Risk> risks;
    risks_.visit(element, risks);
    for (Risk& risk : risks) out_.add(Severity::Warning, risk.where, std::move(risk.text));
    visitFunction(*tag, element, lists);
  }

  void visitFunction(const Tag& tag, const TiXmlElement& element, Lists& lists) {
    for (const TiXmlAttribute* a = element.FirstAttribute(); a; a = a->Next()) {
      const std::string_view utf8 = a->NameTStr();
      if (const Parameter* p = findParameter(tag, utf8)) {
        noteAttribute(*p, element, a->Value());
      } else if (utf8 != "id" && !utf8.starts_with("xmlns") && !utf8.starts_with("xsi:")) {
        const std::wstring name = wide(a->Name());
        std::wstring text = platform::format(L"Function '%s' does not read attribute '%s'", tag.name, name.c_str());
        if (const std::wstring hint = suggestedAttribute(tag, name); !hint.empty()) text += L": " + hint;
        out_.add(Severity::Warning, &element, std::move(text));
      }
    }
    // The handlers' lists are stacked so that the first one is visited first.
    const size_t firstList = lists.size();
    for (const TiXmlElement* child = element.FirstChildElement(); child; child = child->NextSiblingElement()) {
      const std::string_view name = child->ValueStr();
      if (isHandler(name, tag.kind)) {
        lists.push_back(child->FirstChildElement());
      } else if (name == "data" && findParameter(tag, name)) {
        if (!element.Attribute("data")) noteReads(*child, child->GetText());
      } else {
        out_.add(Severity::Error, child,
                 platform::format(L"Element '%s' does not belong in function '%s': %s", wide(child->Value()).c_str(),
                                  tag.name, handlerList(tag.kind).c_str()));
      }
    }
    std::reverse(lists.begin() + static_cast<std::ptrdiff_t>(firstList), lists.end());
  }

  void noteAttribute(const Parameter& p, const TiXmlElement& element, const char* value) {
    switch (p.form) {
      case Form::Text: noteReads(element, value); break;
      case Form::Variable: assigned_.add(value); break;
      case Form::Handle: noteHandle(element, value); break;
      case Form::NewHandle: opened_.add(value); break;
      default: break;
    }
  }

  void noteHandle(const TiXmlElement& element, const char* name) {
    if (name && *name) handlesUsed_.add(std::string_view(name), element);
  }

  void noteReads(const TiXmlElement& element, const char* text) {
    if (!text || !std::strchr(text, '%')) return;
    recorder_.names.clear();
    text_.clear();
    platform::appendWide(text, text_);
    expandReferences(text_, recorder_);
    for (std::wstring& name : recorder_.names) reads_.add(std::move(name), element);
  }

  const FunctionRegistry& registry_;
  Collector& out_;
  RiskChecks risks_;
  ReferenceRecorder recorder_;
  std::wstring text_;  // the text being read, kept for its buffer
  FirstUses<std::wstring> reads_;
  // Names as the script writes them (UTF-8), kept by the document until preparation.
  FirstUses<std::string_view> handlesUsed_;
  NameSet assigned_, opened_;
};

}  // namespace

bool isProvidedVariable(const std::wstring& name) {
  if (isBuiltIn(name)) return true;
  const std::wstring reference = L"%" + name + L"%";
  const std::optional<std::wstring> value = platform::expandEnvironment(reference);
  return value && *value != reference;
}

std::vector<Finding> checkScript(TiXmlDocument& document, const FunctionRegistry& registry, const Presets& presets) {
  std::vector<Finding> findings;
  Collector collector(findings);
  if (const TiXmlElement* root = document.RootElement()) {
    Walker walker(registry, collector);
    walker.walk(*root);
    walker.warn(presets);
  }
  Engine engine(registry, collector);
  engine.prepare(document, presets);
  engine.reset();
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
    return a.line != b.line ? a.line < b.line : a.column < b.column;
  });
  return findings;
}

}  // namespace engine
