// The parsed form of an expression.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace xpath::detail {

enum class Axis {
  Ancestor,
  AncestorOrSelf,
  Attribute,
  Child,
  Descendant,
  DescendantOrSelf,
  Following,
  FollowingSibling,
  Namespace,
  Parent,
  Preceding,
  PrecedingSibling,
  Self,
};

inline bool isReverse(Axis a) {
  return a == Axis::Ancestor || a == Axis::AncestorOrSelf || a == Axis::Preceding || a == Axis::PrecedingSibling;
}

enum class Test {
  Name,       // a QName, matched literally (TinyXML has no namespaces)
  AnyName,    // '*'
  PrefixAny,  // 'prefix:*': names starting with "prefix:"
  Node,       // node()
  Text,       // text()
  Comment,    // comment()
  Pi,         // processing-instruction(): TinyXML has none, matches nothing
  Unbound,    // a name with a prefix other than "xml": no other prefix is bound, so
              // the step fails when it is evaluated
};

enum class Fn {
  Last,
  Position,
  Count,
  Id,
  LocalName,
  NamespaceUri,
  Name,
  String,
  Concat,
  StartsWith,
  Contains,
  SubstringBefore,
  SubstringAfter,
  Substring,
  StringLength,
  NormalizeSpace,
  Translate,
  Boolean,
  Not,
  True,
  False,
  Lang,
  Number,
  Sum,
  Floor,
  Ceiling,
  Round,
  Invalid,  // unknown name or wrong argument count: fails when evaluated
};

struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

struct Step {
  Axis axis = Axis::Child;
  Test test = Test::Node;
  std::string name;  // Name: the QName; PrefixAny: "prefix:"
  std::vector<ExprPtr> predicates;
  // The predicates before this one look at neither the context position nor
  // the size, so each candidate node can be tested alone as it is met.
  std::size_t positionalFrom = 0;
};

enum class Op {
  Or,
  And,
  Eq,
  Ne,
  Lt,
  Le,
  Gt,
  Ge,
  Add,
  Sub,
  Mul,
  Div,
  Mod,
  Neg,
  Union,
  Literal,
  Number,
  Variable,
  Call,
  Filter,  // args[0] filtered by predicates
  Path,    // start (args[0], or the root / context node) then steps
};

enum class PathStart { Context, Root, Expr };

// Static type of a result, used to pick fast paths.
enum class Kind { NodeSet, Boolean, Number, String, Any };

// A run of left-associative binary operators of one precedence, such as
// "a + b - c" or "a or b or c", is one Expr: `op` is its first operator, `ops`
// all of them (ops[i] combines the result so far with args[i + 1]). A long flat
// run is thus no deeper than a single operator.
struct Expr {
  Op op;
  Kind kind = Kind::Any;
  std::vector<ExprPtr> args;        // operands, call arguments, filter primary, path start
  std::vector<Op> ops;              // binary operators, one per operand after the first
  std::vector<ExprPtr> predicates;  // Filter
  std::vector<Step> steps;          // Path
  PathStart start = PathStart::Context;
  std::string text;   // Literal value, Variable name, Invalid call's message
  double number = 0;  // Number
  Fn fn = Fn::Last;   // Call
  int height = 1;     // longest chain of nested expressions below, for the depth bound
  // Same value for every context node of one evaluation (no relative path, no
  // position(), last() or context-node function outside a nested predicate).
  bool independent = false;
  // Index of this expression's value in the evaluation's cache, or -1. Given
  // to the largest independent parts of a predicate, which would otherwise be
  // evaluated again for every node the predicate is tested on.
  int cacheSlot = -1;

  explicit Expr(Op o) : op(o) {}
};

}  // namespace xpath::detail
