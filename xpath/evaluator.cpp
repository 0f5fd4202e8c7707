#include "evaluator.h"

#include "axes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

namespace xpath::detail {

namespace {

bool compareNumbers(Op op, double a, double b) {
  switch (op) {
    case Op::Eq: return a == b;
    case Op::Ne: return a != b;
    case Op::Lt: return a < b;
    case Op::Le: return a <= b;
    case Op::Gt: return a > b;
    case Op::Ge: return a >= b;
    default: return false;
  }
}

// The operator that gives the same answer with the operands swapped.
Op mirrored(Op op) {
  switch (op) {
    case Op::Lt: return Op::Gt;
    case Op::Le: return Op::Ge;
    case Op::Gt: return Op::Lt;
    case Op::Ge: return Op::Le;
    default: return op;
  }
}

bool isEquality(Op op) { return op == Op::Eq || op == Op::Ne; }

bool comparePrimitives(Op op, const Value& a, const Value& b) {
  if (!isEquality(op)) return compareNumbers(op, a.toNumber(), b.toNumber());
  if (a.type() == Value::Type::Boolean || b.type() == Value::Type::Boolean)
    return (a.toBoolean() == b.toBoolean()) == (op == Op::Eq);
  if (a.type() == Value::Type::Number || b.type() == Value::Type::Number)
    return compareNumbers(op, a.toNumber(), b.toNumber());
  return (a.toString() == b.toString()) == (op == Op::Eq);
}

// One node's string-value `s` against a number or string `v`, node on the left.
bool compareStringWith(Op op, std::string_view s, const Value& v) {
  if (v.type() == Value::Type::Number) return compareNumbers(op, stringToNumber(s), v.toNumber());
  if (!isEquality(op)) return compareNumbers(op, stringToNumber(s), v.toNumber());
  return (s == v.toString()) == (op == Op::Eq);
}

bool compareNodeSetWith(Op op, const NodeSet& nodes, const Value& v) {
  if (v.type() == Value::Type::Boolean) return comparePrimitives(op, Value(!nodes.empty()), v);
  // Convert the other side once rather than per node.
  Value other = v.type() == Value::Type::Number || !isEquality(op) ? Value(v.toNumber()) : v;
  std::string scratch;
  return std::any_of(nodes.begin(), nodes.end(),
                     [&](const Node& n) { return compareStringWith(op, stringValue(n, scratch), other); });
}

struct NumberRange {
  double min = std::numeric_limits<double>::infinity();
  double max = -std::numeric_limits<double>::infinity();
  bool any = false;
};

NumberRange numberRange(const NodeSet& nodes) {
  NumberRange r;
  std::string scratch;
  for (const Node& n : nodes) {
    double d = stringToNumber(stringValue(n, scratch));
    if (std::isnan(d)) continue;
    r.any = true;
    r.min = std::min(r.min, d);
    r.max = std::max(r.max, d);
  }
  return r;
}

bool compareNodeSets(Op op, const NodeSet& a, const NodeSet& b) {
  if (a.empty() || b.empty()) return false;
  std::string scratch;
  if (isEquality(op)) {
    std::unordered_set<std::string> right;
    for (const Node& n : b) right.emplace(stringValue(n, scratch));
    if (op == Op::Eq)
      return std::any_of(a.begin(), a.end(),
                         [&](const Node& n) { return right.count(std::string(stringValue(n, scratch))) > 0; });
    // Some pair differs unless both sides hold one and the same value.
    if (right.size() > 1) return true;
    const std::string& only = *right.begin();
    return std::any_of(a.begin(), a.end(), [&](const Node& n) { return stringValue(n, scratch) != only; });
  }
  // Some pair satisfies a < b exactly when the smallest left is below the largest right.
  NumberRange l = numberRange(a), r = numberRange(b);
  if (!l.any || !r.any) return false;
  switch (op) {
    case Op::Lt: return l.min < r.max;
    case Op::Le: return l.min <= r.max;
    case Op::Gt: return l.max > r.min;
    default: return l.max >= r.min;
  }
}

// A relative path of the one step "@name": compared without building a node-set.
bool isAttributeLookup(const Expr& e) {
  if (e.op != Op::Path || e.start != PathStart::Context || e.steps.size() != 1) return false;
  const Step& s = e.steps[0];
  return s.axis == Axis::Attribute && s.test == Test::Name && s.predicates.empty();
}

bool isPrimitiveKind(Kind k) { return k == Kind::String || k == Kind::Number; }

// The positive whole number a literal predicate like [3] selects, 0 if none can match.
std::size_t literalPosition(const Expr& p) {
  double k = p.number;
  if (!(k >= 1) || k != std::floor(k) || k > 1e15) return 0;
  return static_cast<std::size_t>(k);
}

}  // namespace

bool compareValues(Op op, const Value& left, const Value& right) {
  bool ls = left.type() == Value::Type::NodeSet, rs = right.type() == Value::Type::NodeSet;
  if (ls && rs) return compareNodeSets(op, left.nodes(), right.nodes());
  if (ls) return compareNodeSetWith(op, left.nodes(), right);
  if (rs) return compareNodeSetWith(mirrored(op), right.nodes(), left);
  return comparePrimitives(op, left, right);
}

double roundHalfUp(double x) {
  if (std::isnan(x) || std::isinf(x) || std::fabs(x) >= 4503599627370496.0) return x;
  if (x < 0 && x >= -0.5) return -0.0;
  return std::floor(x + 0.5);
}

void Evaluator::visit() {
  if (++visits_ > limits_.maxNodeVisits) throw EvalError("evaluation limit reached");
}

void Evaluator::checkSize(std::size_t n) const {
  if (n > limits_.maxNodeSetSize) throw EvalError("node-set too large");
}

Value Evaluator::eval(const Expr& e, const Context& c) {
  switch (e.op) {
    case Op::Or:
    case Op::And:
    case Op::Eq:
    case Op::Ne:
    case Op::Lt:
    case Op::Le:
    case Op::Gt:
    case Op::Ge: return Value(evalBoolean(e, c));
    case Op::Add:
    case Op::Sub:
    case Op::Mul:
    case Op::Div:
    case Op::Mod:
    case Op::Neg:
    case Op::Number: return Value(evalNumber(e, c));
    case Op::Literal: return Value(e.text);
    case Op::Variable: throw EvalError("no variable $" + e.text);
    case Op::Call: return call(e, c);
    case Op::Union: return Value(unite(evalNodeSet(*e.args[0], c), evalNodeSet(*e.args[1], c)));
    case Op::Filter: {
      NodeSet nodes = evalNodeSet(*e.args[0], c);
      filter(e.predicates, nodes);
      return Value(std::move(nodes));
    }
    case Op::Path: return Value(evalPath(e, c));
  }
  throw EvalError("unknown expression");
}

bool Evaluator::evalBoolean(const Expr& e, const Context& c) {
  switch (e.op) {
    case Op::Or: return evalBoolean(*e.args[0], c) || evalBoolean(*e.args[1], c);
    case Op::And: return evalBoolean(*e.args[0], c) && evalBoolean(*e.args[1], c);
    case Op::Eq:
    case Op::Ne:
    case Op::Lt:
    case Op::Le:
    case Op::Gt:
    case Op::Ge: return compare(e.op, *e.args[0], *e.args[1], c);
    default: return eval(e, c).toBoolean();
  }
}

double Evaluator::evalNumber(const Expr& e, const Context& c) {
  switch (e.op) {
    case Op::Number: return e.number;
    case Op::Neg: return -evalNumber(*e.args[0], c);
    case Op::Add: return evalNumber(*e.args[0], c) + evalNumber(*e.args[1], c);
    case Op::Sub: return evalNumber(*e.args[0], c) - evalNumber(*e.args[1], c);
    case Op::Mul: return evalNumber(*e.args[0], c) * evalNumber(*e.args[1], c);
    case Op::Div: return evalNumber(*e.args[0], c) / evalNumber(*e.args[1], c);
    case Op::Mod: return std::fmod(evalNumber(*e.args[0], c), evalNumber(*e.args[1], c));
    default: return eval(e, c).toNumber();
  }
}

std::string Evaluator::evalString(const Expr& e, const Context& c) {
  if (e.op == Op::Literal) return e.text;
  return eval(e, c).toString();
}

NodeSet Evaluator::evalNodeSet(const Expr& e, const Context& c) {
  Value v = eval(e, c);
  if (v.type() != Value::Type::NodeSet) throw EvalError("a node-set is required");
  return std::move(v.nodes());
}

bool Evaluator::compare(Op op, const Expr& left, const Expr& right, const Context& c) {
  bool result = false;
  if (isAttributeLookup(left) && isPrimitiveKind(right.kind) && attributeCompare(op, left, right, true, c, result))
    return result;
  if (isAttributeLookup(right) && isPrimitiveKind(left.kind) && attributeCompare(op, right, left, false, c, result))
    return result;
  Value l = eval(left, c);
  Value r = eval(right, c);
  return compareValues(op, l, r);
}

bool Evaluator::attributeCompare(Op op, const Expr& path, const Expr& other, bool pathOnLeft, const Context& c,
                                 bool& result) {
  const TiXmlNode* n = c.node.node;
  result = false;
  visit();
  if (c.node.attribute || n->Type() != TiXmlNode::TINYXML_ELEMENT) return true;
  const std::string& name = path.steps[0].name;
  const TiXmlAttribute* a = static_cast<const TiXmlElement*>(n)->FirstAttribute();
  while (a && a->NameTStr() != name) a = a->Next();
  if (!a) return true;  // empty node-set: no comparison with a string or number holds
  Value v = eval(other, c);
  result = compareStringWith(pathOnLeft ? op : mirrored(op), a->ValueStr(), v);
  return true;
}

NodeSet Evaluator::evalPath(const Expr& e, const Context& c) {
  NodeSet nodes;
  switch (e.start) {
    case PathStart::Context: nodes.push_back(c.node); break;
    case PathStart::Root: nodes.push_back(Node{rootOf(c.node.node), nullptr}); break;
    case PathStart::Expr: nodes = evalNodeSet(*e.args[0], c); break;
  }
  for (const Step& step : e.steps) {
    if (nodes.empty()) break;
    applyStep(step, nodes);
  }
  return nodes;
}

// True when no node of the (sorted) set is an ancestor of another: then the
// children or descendants of its nodes come out in document order already.
// In a sorted set an ancestor is directly followed by one of its descendants.
bool Evaluator::isFlat(const NodeSet& nodes) const {
  for (std::size_t i = 1; i < nodes.size(); ++i)
    if (!nodes[i - 1].attribute && isAncestor(nodes[i - 1].node, nodes[i])) return false;
  return true;
}

void Evaluator::applyStep(const Step& step, NodeSet& nodes) {
  std::size_t wanted = 0;  // with a leading [k], only the first k candidates matter
  std::size_t firstPredicate = 0;
  if (!step.predicates.empty() && step.predicates[0]->op == Op::Number) {
    wanted = literalPosition(*step.predicates[0]);
    firstPredicate = 1;
    if (wanted == 0) {
      nodes.clear();
      return;
    }
  }
  NodeSet out, candidates;
  auto counter = [this] { visit(); };
  for (const Node& ctx : nodes) {
    candidates.clear();
    walkAxis(step.axis, ctx, counter, [&](const Node& n) {
      if (!matches(step, step.axis, n)) return true;
      candidates.push_back(n);
      return wanted == 0 || candidates.size() < wanted;
    });
    if (wanted) {
      if (candidates.size() < wanted) continue;
      candidates = NodeSet{candidates[wanted - 1]};
    }
    filter(step.predicates, candidates, firstPredicate);
    if (isReverse(step.axis))
      out.insert(out.end(), candidates.rbegin(), candidates.rend());
    else
      out.insert(out.end(), candidates.begin(), candidates.end());
    checkSize(out.size());
  }
  bool ordered = nodes.size() <= 1 || step.axis == Axis::Self || step.axis == Axis::Attribute ||
                 ((step.axis == Axis::Child || step.axis == Axis::Descendant || step.axis == Axis::DescendantOrSelf) &&
                  isFlat(nodes));
  if (!ordered) sortAndDedupe(out);
  nodes = std::move(out);
}

void Evaluator::filter(const std::vector<ExprPtr>& predicates, NodeSet& nodes, std::size_t first) {
  for (std::size_t i = first; i < predicates.size() && !nodes.empty(); ++i) {
    const Expr& p = *predicates[i];
    if (p.op == Op::Number) {
      std::size_t k = literalPosition(p);
      if (k == 0 || k > nodes.size())
        nodes.clear();
      else
        nodes = NodeSet{nodes[k - 1]};
      continue;
    }
    std::size_t size = nodes.size(), kept = 0;
    for (std::size_t j = 0; j < size; ++j) {
      if (predicateHolds(p, Context{nodes[j], j + 1, size})) nodes[kept++] = nodes[j];
    }
    nodes.resize(kept);
  }
}

bool Evaluator::predicateHolds(const Expr& p, const Context& c) {
  if (p.kind == Kind::Number) return evalNumber(p, c) == static_cast<double>(c.position);
  if (p.kind == Kind::Boolean) return evalBoolean(p, c);
  Value v = eval(p, c);
  if (v.type() == Value::Type::Number) return v.toNumber() == static_cast<double>(c.position);
  return v.toBoolean();
}

NodeSet Evaluator::unite(NodeSet a, NodeSet b) {
  if (a.empty()) return b;
  if (b.empty()) return a;
  a.insert(a.end(), b.begin(), b.end());
  checkSize(a.size());
  sortAndDedupe(a);
  return a;
}

void Evaluator::sortAndDedupe(NodeSet& nodes) {
  if (nodes.size() < 2) return;
  if (nodes.size() <= 32) {
    // A few nodes: walking the tree is cheaper than numbering all of it.
    std::sort(nodes.begin(), nodes.end(), [](const Node& x, const Node& y) { return compareOrder(x, y) < 0; });
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
    return;
  }
  std::vector<std::pair<std::uint32_t, Node>> keyed;
  keyed.reserve(nodes.size());
  for (const Node& n : nodes) keyed.emplace_back(order_.of(n), n);
  std::stable_sort(keyed.begin(), keyed.end(), [](const auto& x, const auto& y) { return x.first < y.first; });
  nodes.clear();
  for (std::size_t i = 0; i < keyed.size(); ++i)
    if (i == 0 || keyed[i].second != keyed[i - 1].second) nodes.push_back(keyed[i].second);
}

}  // namespace xpath::detail
