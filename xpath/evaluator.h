// Evaluates an expression tree against a context node.
#pragma once

#include "ast.h"
#include "node_model.h"
#include "xpath.h"

#include <stdexcept>
#include <string>

namespace xpath::detail {

// Raised inside an evaluation for a type error, an unbound variable or a limit;
// the public functions turn it into a failed evaluation.
struct EvalError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct Context {
  Node node;
  std::size_t position = 1;
  std::size_t size = 1;
};

class Evaluator {
 public:
  explicit Evaluator(const Limits& limits) : limits_(limits) {}

  Value eval(const Expr& e, const Context& c);
  bool evalBoolean(const Expr& e, const Context& c);
  double evalNumber(const Expr& e, const Context& c);
  std::string evalString(const Expr& e, const Context& c);
  NodeSet evalNodeSet(const Expr& e, const Context& c);

  Value call(const Expr& e, const Context& c);  // the core function library

 private:
  NodeSet evalPath(const Expr& e, const Context& c);
  void applyStep(const Step& step, NodeSet& nodes);
  void filter(const std::vector<ExprPtr>& predicates, NodeSet& nodes, std::size_t firstPredicate = 0);
  bool predicateHolds(const Expr& p, const Context& c);
  NodeSet unite(NodeSet a, NodeSet b);
  void sortAndDedupe(NodeSet& nodes);
  bool isFlat(const NodeSet& nodes) const;
  bool compare(Op op, const Expr& left, const Expr& right, const Context& c);
  bool attributeCompare(Op op, const Expr& path, const Expr& other, bool pathOnLeft, const Context& c, bool& result);
  void visit();
  void checkSize(std::size_t n) const;

  Limits limits_;
  std::size_t visits_ = 0;
  DocumentOrder order_;
  std::string scratch_;
};

// Comparison of two values by the recommendation's rules (node-sets included).
bool compareValues(Op op, const Value& left, const Value& right);

// round() of the function library: nearest integer, halves towards +infinity.
double roundHalfUp(double x);

}  // namespace xpath::detail
