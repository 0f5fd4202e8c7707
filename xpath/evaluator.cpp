#include "evaluator.h"

#include "axes.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

// The other side of a comparison with nodes (not a boolean), converted once
// rather than per node.
Value comparedWithNodes(Op op, const Value& v) {
  return v.type() == Value::Type::Number || !isEquality(op) ? Value(v.toNumber()) : v;
}

bool compareNodeSetWith(Op op, const NodeSet& nodes, const Value& v) {
  if (v.type() == Value::Type::Boolean) return comparePrimitives(op, Value(!nodes.empty()), v);
  Value other = comparedWithNodes(op, v);
  std::string scratch;
  return std::any_of(nodes.begin(), nodes.end(),
                     [&](const Node& n) { return compareStringWith(op, stringValue(n, scratch), other); });
}

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

// `a op b` for two non-empty node-sets, `b` read through its key.
bool compareNodeSets(Op op, const NodeSet& a, const NodeSet& b, NodeSetKey& bKey) {
  std::string scratch;
  if (isEquality(op)) {
    const auto& right = bKey.strings(b);
    if (op == Op::Eq)
      return std::any_of(a.begin(), a.end(), [&](const Node& n) { return right.contains(stringValue(n, scratch)); });
    // Some pair differs unless both sides hold one and the same value.
    if (right.size() > 1) return true;
    const std::string& only = *right.begin();
    return std::any_of(a.begin(), a.end(), [&](const Node& n) { return stringValue(n, scratch) != only; });
  }
  // Some pair satisfies a < b exactly when the smallest left is below the largest right.
  NumberRange l = numberRange(a);
  const NumberRange& r = bKey.range(b);
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
  if (e.op != Op::Path || e.start != PathStart::Context || e.steps.size() != 1 || e.cacheSlot >= 0) return false;
  const Step& s = e.steps[0];
  return s.axis == Axis::Attribute && s.test == Test::Name && s.predicates.empty();
}

// "//x" or "descendant::x" without predicates, from the root or the context node.
bool isDescendantNameWalk(const Expr& e) {
  if (e.op != Op::Path || e.start == PathStart::Expr || e.steps.size() != 1 || e.cacheSlot >= 0) return false;
  return walksElements(e.steps[0]) && e.steps[0].predicates.empty();
}

// "." : the context node itself.
bool isContextNode(const Expr& e) {
  if (e.op != Op::Path || e.start != PathStart::Context || e.steps.size() != 1 || e.cacheSlot >= 0) return false;
  const Step& s = e.steps[0];
  return s.axis == Axis::Self && s.test == Test::Node && s.predicates.empty();
}

bool isPrimitiveKind(Kind k) { return k == Kind::String || k == Kind::Number; }

// The positive whole number a literal predicate like [3] selects, 0 if none can match.
std::size_t literalPosition(const Expr& p) {
  double k = p.number;
  if (!(k >= 1) || k != std::floor(k) || k > 1e15) return 0;
  return static_cast<std::size_t>(k);
}

double arithmetic(Op op, double a, double b) {
  switch (op) {
    case Op::Add: return a + b;
    case Op::Sub: return a - b;
    case Op::Mul: return a * b;
    case Op::Div: return a / b;
    default: return std::fmod(a, b);
  }
}

// How the nodes of a list relate: a single node; several, none inside another;
// several in document order, some inside others.
enum class Shape { Single, Flat, Ordered };

// "descendant-or-self::node()/child::x[p]" whose predicates look at positions:
// evaluated as one walk, see childGroupsFrom().
bool isChildGroupPair(const Step* s, const Step* end) {
  return s->axis == Axis::DescendantOrSelf && s->test == Test::Node && s->predicates.empty() && s + 1 != end &&
         s[1].axis == Axis::Child;
}

// The shape of what a step selects from each node of an input list of shape
// `in`, concatenated in input order; nullopt when that concatenation can be
// out of document order or hold duplicates.
std::optional<Shape> streamedShape(Axis axis, Shape in) {
  switch (axis) {
    case Axis::Self: return in;
    case Axis::Attribute:
    case Axis::Namespace: return Shape::Flat;  // an element's attributes come before its children
    case Axis::Child: return in == Shape::Ordered ? std::nullopt : std::optional(Shape::Flat);
    case Axis::Descendant:
    case Axis::DescendantOrSelf: return in == Shape::Ordered ? std::nullopt : std::optional(Shape::Ordered);
    case Axis::Parent: return in == Shape::Single ? std::optional(Shape::Single) : std::nullopt;
    case Axis::FollowingSibling:
    case Axis::PrecedingSibling: return in == Shape::Single ? std::optional(Shape::Flat) : std::nullopt;
    default: return in == Shape::Single ? std::optional(Shape::Ordered) : std::nullopt;
  }
}

// Steps streamed node by node nest one call per step; a longer path is cut
// into runs so the stack stays bounded whatever its length.
constexpr int kStreamedSteps = 4;

// The end of the longest run of steps from `s` whose results, streamed from an
// input of shape `in`, come out in document order without duplicates.
const Step* streamableRun(const Step* s, const Step* end, Shape in) {
  for (int n = 0; s != end && n < kStreamedSteps;) {
    int width = isChildGroupPair(s, end) ? 2 : 1;
    std::optional<Shape> out =
        width == 2 ? (in == Shape::Ordered ? std::nullopt : std::optional(Shape::Ordered)) : streamedShape(s->axis, in);
    if (!out) break;
    in = *out;
    s += width;
    n += width;
  }
  return s;
}

}  // namespace

// A node list borrowed from the evaluator for the length of a scope.
class Scratch {
 public:
  explicit Scratch(Evaluator& ev) : ev_(ev) {
    if (ev.scratchInUse_ == ev.scratch_.size()) ev.scratch_.push_back(std::make_unique<NodeSet>());
    set_ = ev.scratch_[ev.scratchInUse_++].get();
    set_->clear();
  }
  ~Scratch() { --ev_.scratchInUse_; }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  NodeSet& operator*() { return *set_; }
  NodeSet* operator->() { return set_; }

 private:
  Evaluator& ev_;
  NodeSet* set_;
};

const NodeSetKey::Strings& NodeSetKey::strings(const NodeSet& nodes) {
  if (!strings_) {
    strings_.emplace();
    std::string scratch;
    for (const Node& n : nodes) strings_->emplace(stringValue(n, scratch));
  }
  return *strings_;
}

const NumberRange& NodeSetKey::range(const NodeSet& nodes) {
  if (!range_) range_ = numberRange(nodes);
  return *range_;
}

bool compareValues(Op op, const Value& left, const Value& right) {
  bool ls = left.type() == Value::Type::NodeSet, rs = right.type() == Value::Type::NodeSet;
  if (ls && rs) {
    if (left.nodes().empty() || right.nodes().empty()) return false;
    NodeSetKey key;
    return compareNodeSets(op, left.nodes(), right.nodes(), key);
  }
  if (ls) return compareNodeSetWith(op, left.nodes(), right);
  if (rs) return compareNodeSetWith(mirrored(op), right.nodes(), left);
  return comparePrimitives(op, left, right);
}

double roundHalfUp(double x) {
  if (!std::isfinite(x) || x == 0) return x;  // keeps the sign of -0
  // x - floor(x) is exact, unlike x + 0.5, which rounds 0.49999999999999994 up
  // to 1 and odd integers above 2^52 to the next even one.
  double r = std::floor(x);
  if (x - r >= 0.5) r += 1;
  return r == 0 && x < 0 ? -0.0 : r;
}

Evaluator::Evaluator(const Limits& limits, int cacheSlots)
    : limits_(limits), cache_(static_cast<std::size_t>(cacheSlots)), keys_(static_cast<std::size_t>(cacheSlots)) {
  char here;
  stackBase_ = reinterpret_cast<std::uintptr_t>(&here);
}

// Nesting is bounded when parsing, but how much stack a level takes depends on
// the construct and the build (an unoptimised, instrumented build takes several
// times more): past the budget the evaluation fails instead of overflowing.
void Evaluator::checkStack() const {
  char here;
  std::uintptr_t at = reinterpret_cast<std::uintptr_t>(&here);
  std::size_t used = at < stackBase_ ? stackBase_ - at : at - stackBase_;
  if (used > limits_.maxStackBytes) throw EvalError("expression nested too deeply");
}

void Evaluator::visit() {
  if (++visits_ > limits_.maxNodeVisits) throw EvalError("evaluation limit reached");
}

void Evaluator::checkSize(std::size_t n) const {
  if (n > limits_.maxNodeSetSize) throw EvalError("node-set too large");
}

// --- values, with the cache of context-independent parts -------------------

const Value& Evaluator::cached(const Expr& e, const Context& c) {
  std::optional<Value>& slot = cache_[static_cast<std::size_t>(e.cacheSlot)];
  if (!slot) slot = compute(e, c);
  return *slot;
}

const Value& Evaluator::valueOf(const Expr& e, const Context& c, Value& holder) {
  if (e.cacheSlot >= 0) return cached(e, c);
  holder = compute(e, c);
  return holder;
}

const NodeSet& Evaluator::nodeSetOf(const Expr& e, const Context& c, Value& holder) {
  const Value& v = valueOf(e, c, holder);
  if (v.type() != Value::Type::NodeSet) throw EvalError("a node-set is required");
  return v.nodes();
}

Value Evaluator::eval(const Expr& e, const Context& c) {
  if (e.cacheSlot >= 0) return cached(e, c);
  return compute(e, c);
}

bool Evaluator::evalBoolean(const Expr& e, const Context& c) {
  if (e.cacheSlot >= 0) return cached(e, c).toBoolean();
  return booleanOf(e, c);
}

double Evaluator::evalNumber(const Expr& e, const Context& c) {
  if (e.cacheSlot >= 0) return cached(e, c).toNumber();
  return numberOf(e, c);
}

std::string Evaluator::evalString(const Expr& e, const Context& c) {
  if (e.cacheSlot >= 0) return cached(e, c).toString();
  if (e.op == Op::Literal) return e.text;
  if (e.op == Op::Path) {
    std::string s;
    if (std::optional<Node> n = firstNode(e, c)) appendStringValue(*n, s);
    return s;
  }
  return compute(e, c).toString();
}

std::string_view Evaluator::stringOf(const Expr& e, const Context& c, std::string& scratch) {
  if (e.op == Op::Literal) return e.text;
  if (isAttributeLookup(e)) {
    const std::string* value = attributeOf(c.node, e.steps[0].name);
    return value ? std::string_view(*value) : std::string_view();
  }
  if (isContextNode(e)) return stringValue(c.node, scratch);
  if (e.op == Op::Path && e.cacheSlot < 0) {
    std::optional<Node> n = firstNode(e, c);
    return n ? stringValue(*n, scratch) : std::string_view();
  }
  scratch = evalString(e, c);
  return scratch;
}

NodeSetKey& Evaluator::keyOf(const Expr& e) {
  std::unique_ptr<NodeSetKey>& key = keys_[static_cast<std::size_t>(e.cacheSlot)];
  if (!key) key = std::make_unique<NodeSetKey>();
  return *key;
}

const std::string* Evaluator::attributeOf(const Node& n, const std::string& name) {
  visit();
  if (n.attribute || n.node->Type() != TiXmlNode::TINYXML_ELEMENT) return nullptr;
  for (const TiXmlAttribute* a = static_cast<const TiXmlElement*>(n.node)->FirstAttribute(); a; a = a->Next())
    if (sameText(a->NameTStr(), name)) return &a->ValueStr();
  return nullptr;
}

NodeSet Evaluator::evalNodeSet(const Expr& e, const Context& c) {
  Value holder;
  const NodeSet& nodes = nodeSetOf(e, c, holder);
  return &nodes == &holder.nodes() ? std::move(holder.nodes()) : nodes;
}

std::optional<Node> Evaluator::firstNode(const Expr& e, const Context& c) {
  std::optional<Node> first;
  auto take = [&](const Node& n) {
    first = n;
    return false;
  };
  eachNode(e, c, take);
  return first;
}

Value Evaluator::compute(const Expr& e, const Context& c) {
  checkStack();
  switch (e.op) {
    case Op::Or:
    case Op::And:
    case Op::Eq:
    case Op::Ne:
    case Op::Lt:
    case Op::Le:
    case Op::Gt:
    case Op::Ge: return Value(booleanOf(e, c));
    case Op::Add:
    case Op::Sub:
    case Op::Mul:
    case Op::Div:
    case Op::Mod:
    case Op::Neg:
    case Op::Number: return Value(numberOf(e, c));
    case Op::Literal: return Value(e.text);
    case Op::Variable: throw EvalError("no variable $" + e.text);
    case Op::Call: return call(e, c);
    case Op::Union: {
      NodeSet all;
      for (const ExprPtr& a : e.args) {
        Value holder;
        const NodeSet& part = nodeSetOf(*a, c, holder);
        all.insert(all.end(), part.begin(), part.end());
        checkSize(all.size());
      }
      sortAndDedupe(all);
      return Value(std::move(all));
    }
    case Op::Filter: {
      NodeSet nodes = evalNodeSet(*e.args[0], c);
      filter(e.predicates, nodes);
      return Value(std::move(nodes));
    }
    case Op::Path: {
      NodeSet nodes;
      auto collect = [&](const Node& n) {
        nodes.push_back(n);
        checkSize(nodes.size());
        return true;
      };
      eachInPath(e, c, collect);
      return Value(std::move(nodes));
    }
  }
  throw EvalError("unknown expression");
}

bool Evaluator::booleanOf(const Expr& e, const Context& c) {
  checkStack();
  switch (e.op) {
    case Op::Or:
      return std::any_of(e.args.begin(), e.args.end(), [&](const ExprPtr& a) { return evalBoolean(*a, c); });
    case Op::And:
      return std::all_of(e.args.begin(), e.args.end(), [&](const ExprPtr& a) { return evalBoolean(*a, c); });
    case Op::Eq:
    case Op::Ne:
    case Op::Lt:
    case Op::Le:
    case Op::Gt:
    case Op::Ge: return compareChain(e, c);
    case Op::Path: return firstNode(e, c).has_value();
    default: return compute(e, c).toBoolean();
  }
}

double Evaluator::numberOf(const Expr& e, const Context& c) {
  checkStack();
  switch (e.op) {
    case Op::Number: return e.number;
    case Op::Neg: return -evalNumber(*e.args[0], c);
    case Op::Add:
    case Op::Sub:
    case Op::Mul:
    case Op::Div:
    case Op::Mod: {
      double result = evalNumber(*e.args[0], c);
      for (std::size_t i = 1; i < e.args.size(); ++i) result = arithmetic(e.ops[i - 1], result, evalNumber(*e.args[i], c));
      return result;
    }
    case Op::Path: {
      std::string scratch;
      return stringToNumber(stringOf(e, c, scratch));
    }
    default: return compute(e, c).toNumber();
  }
}

// --- comparisons ---------------------------------------------------------------

bool Evaluator::compareChain(const Expr& e, const Context& c) {
  bool result = compare(e.ops[0], *e.args[0], *e.args[1], c);
  for (std::size_t i = 2; i < e.args.size(); ++i) {
    Value holder;
    result = compareValues(e.ops[i - 1], Value(result), valueOf(*e.args[i], c, holder));
  }
  return result;
}

bool Evaluator::compare(Op op, const Expr& left, const Expr& right, const Context& c) {
  if (isPrimitiveKind(right.kind)) {
    if (isAttributeLookup(left)) return attributeCompare(op, left, right, true, c);
    if (left.op == Op::Path && left.cacheSlot < 0) return pathCompare(op, left, right, true, c);
  }
  if (isPrimitiveKind(left.kind)) {
    if (isAttributeLookup(right)) return attributeCompare(op, right, left, false, c);
    if (right.op == Op::Path && right.cacheSlot < 0) return pathCompare(op, right, left, false, c);
  }
  Value lh, rh;
  const Value& l = valueOf(left, c, lh);
  const Value& r = valueOf(right, c, rh);
  // A node-set that is the same for every node a predicate tests is prepared
  // for comparison once, not once per node.
  bool nodeSets = l.type() == Value::Type::NodeSet && r.type() == Value::Type::NodeSet;
  if (nodeSets && !l.nodes().empty() && !r.nodes().empty()) {
    if (right.cacheSlot >= 0) return compareNodeSets(op, l.nodes(), r.nodes(), keyOf(right));
    if (left.cacheSlot >= 0) return compareNodeSets(mirrored(op), r.nodes(), l.nodes(), keyOf(left));
  }
  return compareValues(op, l, r);
}

// "@name op other" on the context element: one attribute looked up by name.
bool Evaluator::attributeCompare(Op op, const Expr& path, const Expr& other, bool pathOnLeft, const Context& c) {
  const std::string* value = attributeOf(c.node, path.steps[0].name);
  if (!value) return false;  // empty node-set: no comparison with a string or number holds
  Op o = pathOnLeft ? op : mirrored(op);
  if (other.op == Op::Literal && isEquality(o)) return (*value == other.text) == (o == Op::Eq);
  if (other.op == Op::Number) return compareNumbers(o, stringToNumber(*value), other.number);
  Value holder;
  return compareStringWith(o, *value, comparedWithNodes(o, valueOf(other, c, holder)));
}

// A path against a string or number holds when one of its nodes does: the
// walk stops at the first.
bool Evaluator::pathCompare(Op op, const Expr& path, const Expr& other, bool pathOnLeft, const Context& c) {
  Op o = pathOnLeft ? op : mirrored(op);
  Value holder;
  Value v = comparedWithNodes(o, valueOf(other, c, holder));
  std::string scratch;
  bool found = false;
  auto test = [&](const Node& n) {
    found = compareStringWith(o, stringValue(n, scratch), v);
    return !found;
  };
  eachInPath(path, c, test);
  return found;
}

// --- node-sets -------------------------------------------------------------------

bool Evaluator::eachNode(const Expr& e, const Context& c, NodeSink sink) {
  if (e.op == Op::Path && e.cacheSlot < 0) return eachInPath(e, c, sink);
  Value holder;
  for (const Node& n : nodeSetOf(e, c, holder))
    if (!sink(n)) return false;
  return true;
}

// count() of a node-set expression. "//x" and "descendant::x" are counted by
// the walk over the elements itself: passing each node on costs as much again.
std::size_t Evaluator::count(const Expr& e, const Context& c) {
  std::size_t n = 0;
  if (isDescendantNameWalk(e)) {
    const Step& step = e.steps[0];
    Node from = e.start == PathStart::Root ? Node{rootOf(c.node.node), nullptr} : c.node;
    if (from.attribute) return 0;
    walkDescendantElements(
        from.node, step.axis == Axis::DescendantOrSelf, [this] { visit(); },
        [&](const TiXmlNode* element) { return nameMatches(step, element->ValueStr()); },
        [&](const TiXmlNode*, std::size_t) {
          ++n;
          return true;
        });
    return n;
  }
  auto counter = [&](const Node&) {
    ++n;
    return true;
  };
  eachNode(e, c, counter);
  return n;
}

bool Evaluator::eachInPath(const Expr& e, const Context& c, NodeSink sink) {
  checkStack();
  // Reaching a path is enough for an unbound prefix to fail, even when an
  // earlier step selects nothing.
  for (const Step& s : e.steps)
    if (s.test == Test::Unbound) throw EvalError("namespace prefix of '" + s.name + "' is not bound");
  const Step* steps = e.steps.data();
  const Step* end = steps + e.steps.size();
  switch (e.start) {
    case PathStart::Context: return eachFrom({&c.node, 1}, steps, end, sink);
    case PathStart::Root: {
      Node root{rootOf(c.node.node), nullptr};
      return eachFrom({&root, 1}, steps, end, sink);
    }
    case PathStart::Expr: {
      Value holder;
      return eachFrom(nodeSetOf(*e.args[0], c, holder), steps, end, sink);
    }
  }
  return true;
}

// Runs the steps over `nodes` (in document order). Runs of steps that keep
// document order are streamed node by node, with nothing stored in between;
// a step that would mix the order is applied to the whole list and sorted.
bool Evaluator::eachFrom(std::span<const Node> nodes, const Step* step, const Step* end, NodeSink sink) {
  Scratch first(*this), second(*this);
  NodeSet* out = &*first;
  NodeSet* spare = &*second;
  auto collect = [&](const Node& n) {
    out->push_back(n);
    checkSize(out->size());
    return true;
  };
  while (step != end && !nodes.empty()) {
    Shape shape = nodes.size() == 1 ? Shape::Single : isFlat(nodes) ? Shape::Flat : Shape::Ordered;
    const Step* stop = streamableRun(step, end, shape);
    if (stop == end) {
      for (const Node& n : nodes)
        if (!streamFrom(n, step, end, sink)) return false;
      return true;
    }
    out->clear();
    if (stop == step) {
      for (const Node& n : nodes) stepFrom(*step, n, collect);
      sortAndDedupe(*out);
      ++step;
    } else {
      for (const Node& n : nodes) streamFrom(n, step, stop, collect);
      step = stop;
    }
    nodes = *out;
    std::swap(out, spare);
  }
  for (const Node& n : nodes)
    if (!sink(n)) return false;
  return true;
}

bool Evaluator::streamFrom(const Node& ctx, const Step* step, const Step* end, NodeSink sink) {
  if (step == end) return sink(ctx);
  bool pair = isChildGroupPair(step, end);
  const Step* after = step + (pair ? 2 : 1);
  auto rest = [&](const Node& n) { return streamFrom(n, after, end, sink); };
  // The last step feeds the sink itself.
  NodeSink next = after == end ? sink : NodeSink(rest);
  return pair ? childGroupsFrom(step[1], ctx, next) : stepFrom(*step, ctx, next);
}

bool Evaluator::holdsEach(const Step& step, const Node& n) {
  for (std::size_t i = 0; i < step.positionalFrom; ++i)
    if (!predicateHolds(*step.predicates[i], Context{n, 1, 1})) return false;
  return true;
}

// The nodes one step selects from `ctx`, in document order.
bool Evaluator::stepFrom(const Step& step, const Node& ctx, NodeSink next) {
  const auto& predicates = step.predicates;
  auto counter = [this] { visit(); };
  if (step.positionalFrom == predicates.size() && !isReverse(step.axis)) {
    // Each node is decided alone and passed on as soon as it is met.
    bool going = true;
    auto pass = [&](const Node& n) {
      if (!predicates.empty() && !holdsEach(step, n)) return true;
      going = next(n);
      return going;
    };
    if (walksElements(step) && !ctx.attribute) {
      auto named = [&](const TiXmlNode* e) { return nameMatches(step, e->ValueStr()); };
      walkDescendantElements(ctx.node, step.axis == Axis::DescendantOrSelf, counter, named,
                             [&](const TiXmlNode* e, std::size_t) { return pass(Node{e, nullptr}); });
      return going;
    }
    walkAxis(step.axis, ctx, counter, [&](const Node& n) { return !matches(step, step.axis, n) || pass(n); });
    return going;
  }
  // Positions count in axis order among the nodes that passed the predicates
  // before; with a leading [k], only the first k of them matter.
  std::size_t from = step.positionalFrom, wanted = 0;
  if (from < predicates.size() && predicates[from]->op == Op::Number) {
    wanted = literalPosition(*predicates[from]);
    if (wanted == 0) return true;
  }
  Scratch group(*this);
  walkAxis(step.axis, ctx, counter, [&](const Node& n) {
    if (!matches(step, step.axis, n) || !holdsEach(step, n)) return true;
    group->push_back(n);
    checkSize(group->size());
    return wanted == 0 || group->size() < wanted;
  });
  if (wanted) {
    if (group->size() < wanted) return true;
    Node kth = (*group)[wanted - 1];
    group->assign(1, kth);
    ++from;
  }
  filter(predicates, *group, from);
  if (isReverse(step.axis)) {
    for (auto it = group->rbegin(); it != group->rend(); ++it)
      if (!next(*it)) return false;
    return true;
  }
  for (const Node& n : *group)
    if (!next(n)) return false;
  return true;
}

// "descendant-or-self::node()/child::x[p]" from `ctx`, where p looks at
// positions among the children of each parent. One walk over the subtree in
// document order: at the first x child of a parent, that parent's children are
// filtered as a group (kept on a stack of open groups, one per level), and the
// survivors are passed on as the walk reaches them.
bool Evaluator::childGroupsFrom(const Step& child, const Node& ctx, NodeSink next) {
  if (ctx.attribute) return true;
  struct Group {
    std::size_t parentDepth, begin, next, end;  // survivors[begin, end), next to meet
  };
  std::vector<Group> groups;
  Scratch survivors(*this);
  auto keep = [&](const Node& n) {
    survivors->push_back(n);
    checkSize(survivors->size());
    return true;
  };
  // Meets `n`, `depth` levels below `ctx`; false to stop.
  auto meet = [&](const TiXmlNode* n, std::size_t depth) {
    while (!groups.empty() && groups.back().parentDepth >= depth) {
      survivors->resize(groups.back().begin);
      groups.pop_back();
    }
    Node node{n, nullptr};
    if (!matches(child, Axis::Child, node)) return true;
    if (groups.empty() || groups.back().parentDepth != depth - 1) {
      std::size_t begin = survivors->size();
      stepFrom(child, Node{n->Parent(), nullptr}, keep);
      groups.push_back({depth - 1, begin, begin, survivors->size()});
    }
    Group& g = groups.back();
    if (g.next == g.end || (*survivors)[g.next].node != n) return true;
    ++g.next;
    return next(node);
  };
  const TiXmlNode* top = ctx.node;
  if (isNameTest(child.test)) {
    // Only elements can pass, and meeting every one of them is enough to
    // close the groups of parents the walk has left.
    bool going = true;
    walkDescendantElements(
        top, false, [this] { visit(); }, [](const TiXmlNode*) { return true; },
        [&](const TiXmlNode* e, std::size_t depth) {
          going = meet(e, depth);
          return going;
        });
    return going;
  }
  std::size_t depth = 1;
  for (const TiXmlNode* n = firstChild(top); n;) {
    visit();
    if (!meet(n, depth)) return false;
    // On to the next node of the subtree in document order.
    if (const TiXmlNode* c = firstChild(n)) {
      n = c;
      ++depth;
      continue;
    }
    while (true) {
      if (const TiXmlNode* s = nextSibling(n)) {
        n = s;
        break;
      }
      n = n->Parent();
      --depth;
      if (n == top) {
        n = nullptr;
        break;
      }
    }
  }
  return true;
}

// True when no node of the (sorted) list is an ancestor of another: then the
// children or descendants of its nodes come out in document order already.
// In a sorted list an ancestor is directly followed by one of its descendants.
bool Evaluator::isFlat(std::span<const Node> nodes) const {
  for (std::size_t i = 1; i < nodes.size(); ++i)
    if (!nodes[i - 1].attribute && isAncestor(nodes[i - 1].node, nodes[i])) return false;
  return true;
}

void Evaluator::filter(const std::vector<ExprPtr>& predicates, NodeSet& nodes, std::size_t first) {
  for (std::size_t i = first; i < predicates.size() && !nodes.empty(); ++i) {
    const Expr& p = *predicates[i];
    if (p.op == Op::Number) {
      std::size_t k = literalPosition(p);
      if (k == 0 || k > nodes.size())
        nodes.clear();
      else
        nodes.assign(1, nodes[k - 1]);
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
  checkStack();
  if (p.kind == Kind::Number) return evalNumber(p, c) == static_cast<double>(c.position);
  if (p.kind != Kind::Any) return evalBoolean(p, c);
  Value holder;
  const Value& v = valueOf(p, c, holder);
  if (v.type() == Value::Type::Number) return v.toNumber() == static_cast<double>(c.position);
  return v.toBoolean();
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
