#pragma once
// The vocabulary: every tag with its class, its kind and its attributes.
#include <initializer_list>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "engine/function.h"
#include "engine/log_line.h"
#include "engine/parameters.h"

namespace engine {

using Factory = std::unique_ptr<FunctionBase> (*)();
using ParameterList = const Parameters& (*)();

template <class T>
std::unique_ptr<FunctionBase> create() {
  return std::make_unique<T>();
}

// A function's kind follows from the class it derives from.
template <class F>
constexpr FunctionKind kindOf() {
  static_assert(std::is_base_of_v<FunctionBase, F>);
  if constexpr (std::is_base_of_v<FunctionRetError, F>) return FunctionKind::Error;
  if constexpr (std::is_base_of_v<FunctionRetBool, F>) return FunctionKind::Bool;
  return FunctionKind::Plain;
}

// What the reference says of a tag beyond its attributes, kind and handlers.
// Texts may span lines; backquotes mark names and values.
class TagDoc {
 public:
  // `lines` are the templates the tag's code logs with.
  TagDoc(const wchar_t* summary, std::initializer_list<LogLine> lines, const wchar_t* results, const wchar_t* example);
  TagDoc(const TagDoc&) = delete;
  TagDoc& operator=(const TagDoc&) = delete;

  const std::vector<LogLine>& lines() const { return lines_; }

  const wchar_t* summary;  // what the function does
  const wchar_t* log;      // the lines it logs, as format templates, one a line
  const wchar_t* results;  // what its result and error texts mean
  const wchar_t* example;  // script elements that use it

 private:
  std::vector<LogLine> lines_;
  std::wstring logText_;
};

// One tag's description.
struct Tag {
  const wchar_t* name;
  FunctionKind kind;
  Factory factory;
  ParameterList parameters;
  const TagDoc* doc;  // nullptr for the stand-ins of tests
  const wchar_t* family = nullptr;  // set by the registry
};

// The tag `name` made by class F, described by F::parameters() and F::doc.
template <class F>
Tag tag(const wchar_t* name) {
  const TagDoc* doc = nullptr;
  if constexpr (requires { F::doc; }) doc = &F::doc;
  return {name, kindOf<F>(), &create<F>, &F::parameters, doc};
}

template <class F, const auto& variant>
std::unique_ptr<FunctionBase> createVariant() {
  return std::make_unique<F>(variant);
}

template <class F, const auto& variant>
const Parameters& variantParameters() {
  if constexpr (requires { F::parameters(variant); })
    return F::parameters(variant);
  else
    return F::parameters();
}

// The tag `name` made by class F for one of the tags it serves: F is built
// from `variant`, a constant that says what sets the tag apart, describes it
// (`variant.doc`) and may choose its attributes (F::parameters(variant)).
template <class F, const auto& variant>
Tag tag(const wchar_t* name) {
  return {name, kindOf<F>(), &createVariant<F, variant>, &variantParameters<F, variant>, &variant.doc};
}

// The handler elements a function of `kind` may hold.
std::span<const wchar_t* const> handlerNames(FunctionKind kind);

class FunctionRegistry {
 public:
  // Tags added from now on belong to the family of this title.
  void beginFamily(const wchar_t* title) { families_.push_back(title); }
  // The family titles, in the order they began.
  const std::vector<const wchar_t*>& families() const { return families_; }

  // Refuses (returns false, changes nothing) a tag without a name, factory or
  // description, or whose name is already registered: the first one wins.
  bool add(const Tag& tag);
  // Adds a family's table; false when any of its tags was refused.
  bool add(std::span<const Tag> tags);

  // The tag of a script's element name (UTF-8), as written: names are case-sensitive.
  const Tag* lookup(std::string_view name) const;
  // Every tag, in name order.
  std::vector<const Tag*> tags() const;
  size_t size() const { return tags_.size(); }

 private:
  // FNV-1a: tag names are short, and every element of a script is looked up,
  // so a hash computed in line beats the library's general one.
  struct NameHash {
    using is_transparent = void;
    size_t operator()(std::string_view name) const {
      uint64_t hash = 14695981039346656037u;
      for (unsigned char c : name) hash = (hash ^ c) * 1099511628211u;
      return static_cast<size_t>(hash);
    }
  };
  std::map<std::wstring, Tag, std::less<>> tags_;
  // The same tags by their UTF-8 names, which is how a script spells them.
  std::unordered_map<std::string, const Tag*, NameHash, std::equal_to<>> byScriptName_;
  std::vector<const wchar_t*> families_;
};

}  // namespace engine
