// XPath 1.0 over the TinyXML DOM (UTF-8, TIXML_USE_STL).
//
// The three operations the XML functions use are firstNode(), firstAttribute()
// and evaluateString(). Expression and Value give the lower-level access: compile
// once, evaluate many times, look at the typed result.
//
// Nothing here throws: a syntax error, an evaluation error (unknown variable, a
// non-node-set where one is needed, a limit reached) or an allocation failure is a
// failed evaluation.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class TiXmlNode;
class TiXmlAttribute;

namespace xpath {

// One node of the XPath data model. An attribute node is its owner element plus
// the attribute; every other node is a TiXmlNode (document, element, comment, or
// the first TiXmlText of a run of adjacent text and CDATA siblings).
struct Node {
  const TiXmlNode* node = nullptr;
  const TiXmlAttribute* attribute = nullptr;

  bool isAttribute() const { return attribute != nullptr; }
  friend bool operator==(const Node&, const Node&) = default;
};

using NodeSet = std::vector<Node>;  // always in document order, no duplicates

class Value {
 public:
  enum class Type { NodeSet, Boolean, Number, String };

  Value() : type_(Type::Boolean) {}
  explicit Value(bool b) : type_(Type::Boolean), boolean_(b) {}
  explicit Value(double n) : type_(Type::Number), number_(n) {}
  explicit Value(std::string s) : type_(Type::String), string_(std::move(s)) {}
  explicit Value(NodeSet nodes) : type_(Type::NodeSet), nodes_(std::move(nodes)) {}

  Type type() const { return type_; }
  const NodeSet& nodes() const { return nodes_; }
  NodeSet& nodes() { return nodes_; }

  // The recommendation's boolean(), number() and string() conversions.
  bool toBoolean() const;
  double toNumber() const;
  std::string toString() const;

 private:
  Type type_;
  bool boolean_ = false;
  double number_ = 0;
  std::string string_;
  NodeSet nodes_;
};

// Bounds on one evaluation. Reaching one fails the evaluation.
struct Limits {
  std::size_t maxNodeVisits = std::size_t{1} << 28;  // axis steps over the tree
  std::size_t maxNodeSetSize = std::size_t{1} << 24;
  // Stack for nested predicates, calls and operators: about 1.5 KB a level in an
  // optimised build, ten times that with sanitizers.
  std::size_t maxStackBytes = std::size_t{4} << 20;
};

namespace detail {
struct Expr;
}

class Expression {
 public:
  // A compiled expression, or std::nullopt (with a message in *error) on a
  // syntax error or nesting beyond the limit. An unknown function, a wrong
  // argument count, a variable or a name test with an unbound prefix is an
  // error only when evaluation reaches it.
  static std::optional<Expression> compile(std::string_view text, std::string* error = nullptr);

  // Evaluates with `context` as the context node (position 1, size 1).
  std::optional<Value> evaluate(const TiXmlNode& context, const Limits& limits = {}) const;

  // The first node in document order of a node-set result, found without
  // building the rest of the set; std::nullopt when the evaluation fails, the
  // result is not a node-set, or it is empty.
  std::optional<Node> first(const TiXmlNode& context, const Limits& limits = {}) const;

  // The result converted with string(), reading only the first node of a
  // node-set; std::nullopt when the evaluation fails.
  std::optional<std::string> evaluateString(const TiXmlNode& context, const Limits& limits = {}) const;

  Expression(Expression&&) noexcept;
  Expression& operator=(Expression&&) noexcept;
  ~Expression();

 private:
  Expression(std::unique_ptr<detail::Expr> root, int cacheSlots);
  std::unique_ptr<detail::Expr> root_;
  int cacheSlots_ = 0;  // values of context-independent parts, kept per evaluation
};

// Deepest nesting of parentheses, predicates, arguments and operators accepted.
// A run of binary operators of one precedence ("1 + 2 + ... + n") is one level.
inline constexpr int kMaxNesting = 1000;

// First node (document order) of a node-set result; nullptr when the expression
// fails, is not a node-set, is empty, or its first node is an attribute.
// A text node made of several TiXmlText siblings is returned as the first of them.
const TiXmlNode* firstNode(std::string_view expression, const TiXmlNode& context);
TiXmlNode* firstNode(std::string_view expression, TiXmlNode& context);

// The first node of a node-set result when it is an attribute, else nullptr.
TiXmlAttribute* firstAttribute(std::string_view expression, const TiXmlNode& context);

// The result converted with string(); std::nullopt when the expression fails.
std::optional<std::string> evaluateString(std::string_view expression, const TiXmlNode& context);

// The string() form of a number: no exponent, shortest digits that read back as
// the same double, "NaN", "Infinity", "-Infinity", and "0" for -0.
std::string numberToString(double value);

// The number() form of a string: optional blanks, optional '-', digits with an
// optional '.', optional blanks; anything else is NaN.
double stringToNumber(std::string_view text);

}  // namespace xpath
