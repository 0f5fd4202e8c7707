// Evaluates an expression tree against a context node.
#pragma once

#include "ast.h"
#include "node_model.h"
#include "xpath.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <vector>

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

// A borrowed callback that receives nodes one at a time; returning false stops
// the walk that feeds it.
class NodeSink {
 public:
  template <class F>
    requires(!std::is_same_v<std::remove_cv_t<F>, NodeSink>)
  NodeSink(F& f) : object_(&f), call_([](void* o, const Node& n) { return (*static_cast<F*>(o))(n); }) {}
  bool operator()(const Node& n) const { return call_(object_, n); }

 private:
  void* object_;
  bool (*call_)(void*, const Node&);
};

struct NumberRange {
  double min = std::numeric_limits<double>::infinity();
  double max = -std::numeric_limits<double>::infinity();
  bool any = false;  // some node's string-value is a number
};

// What comparisons read of a node-set on their right-hand side, built on first
// use: the distinct string-values for = and !=, the numeric range for the
// others.
class NodeSetKey {
 public:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };
  using Strings = std::unordered_set<std::string, Hash, std::equal_to<>>;
  const Strings& strings(const NodeSet& nodes);
  const NumberRange& range(const NodeSet& nodes);

 private:
  std::optional<Strings> strings_;
  std::optional<NumberRange> range_;
};

class Evaluator {
 public:
  Evaluator(const Limits& limits, int cacheSlots);

  Value eval(const Expr& e, const Context& c);
  bool evalBoolean(const Expr& e, const Context& c);
  double evalNumber(const Expr& e, const Context& c);
  std::string evalString(const Expr& e, const Context& c);
  NodeSet evalNodeSet(const Expr& e, const Context& c);
  // The first node in document order of a node-set expression, found without
  // building the rest of the set.
  std::optional<Node> firstNode(const Expr& e, const Context& c);

  Value call(const Expr& e, const Context& c);  // the core function library

 private:
  friend class Scratch;

  Value compute(const Expr& e, const Context& c);
  bool booleanOf(const Expr& e, const Context& c);
  double numberOf(const Expr& e, const Context& c);
  const Value& cached(const Expr& e, const Context& c);
  const Value& valueOf(const Expr& e, const Context& c, Value& holder);
  const NodeSet& nodeSetOf(const Expr& e, const Context& c, Value& holder);
  // string() of `e` as a view into the tree, the expression or `scratch`:
  // function arguments such as "@name" or "." are read without copies.
  std::string_view stringOf(const Expr& e, const Context& c, std::string& scratch);
  const std::string* attributeOf(const Node& n, const std::string& name);
  NodeSetKey& keyOf(const Expr& cachedNodeSet);

  bool eachNode(const Expr& e, const Context& c, NodeSink sink);
  std::size_t count(const Expr& e, const Context& c);
  bool eachInPath(const Expr& e, const Context& c, NodeSink sink);
  bool eachFrom(std::span<const Node> nodes, const Step* step, const Step* end, NodeSink sink);
  bool streamFrom(const Node& ctx, const Step* step, const Step* end, NodeSink sink);
  bool stepFrom(const Step& step, const Node& ctx, NodeSink next);
  bool childGroupsFrom(const Step& child, const Node& ctx, NodeSink next);
  bool holdsEach(const Step& step, const Node& n);

  void filter(const std::vector<ExprPtr>& predicates, NodeSet& nodes, std::size_t firstPredicate = 0);
  bool predicateHolds(const Expr& p, const Context& c);
  void sortAndDedupe(NodeSet& nodes);
  bool isFlat(std::span<const Node> nodes) const;
  bool compareChain(const Expr& e, const Context& c);
  bool compare(Op op, const Expr& left, const Expr& right, const Context& c);
  bool attributeCompare(Op op, const Expr& path, const Expr& other, bool pathOnLeft, const Context& c);
  bool pathCompare(Op op, const Expr& path, const Expr& other, bool pathOnLeft, const Context& c);
  void visit();
  void checkStack() const;
  void checkSize(std::size_t n) const;

  Limits limits_;
  std::uintptr_t stackBase_;  // where the evaluation's stack use is measured from
  std::size_t visits_ = 0;
  DocumentOrder order_;
  std::vector<std::optional<Value>> cache_;  // by Expr::cacheSlot
  std::vector<std::unique_ptr<NodeSetKey>> keys_;  // by Expr::cacheSlot, for cached node-sets
  // Node lists lent out and given back in stack order, reused across steps.
  std::vector<std::unique_ptr<NodeSet>> scratch_;
  std::size_t scratchInUse_ = 0;
};

// Comparison of two values by the recommendation's rules (node-sets included).
bool compareValues(Op op, const Value& left, const Value& right);

// round() of the function library: nearest integer, halves towards +infinity,
// and -0 for arguments in [-0.5, -0].
double roundHalfUp(double x);

}  // namespace xpath::detail
