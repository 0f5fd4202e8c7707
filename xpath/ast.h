// The parsed form of an expression.
#pragma once

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
};

struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

struct Step {
  Axis axis = Axis::Child;
  Test test = Test::Node;
  std::string name;  // Name: the QName; PrefixAny: "prefix:"
  std::vector<ExprPtr> predicates;
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

struct Expr {
  Op op;
  Kind kind = Kind::Any;
  std::vector<ExprPtr> args;        // operands, call arguments, filter primary, path start
  std::vector<ExprPtr> predicates;  // Filter
  std::vector<Step> steps;          // Path
  PathStart start = PathStart::Context;
  std::string text;   // Literal value, Variable name
  double number = 0;  // Number
  Fn fn = Fn::Last;   // Call
  int height = 1;     // longest chain of nested expressions below, for the depth bound

  explicit Expr(Op o) : op(o) {}
};

}  // namespace xpath::detail
