#include "parser.h"

#include "lexer.h"
#include "xpath.h"

#include <algorithm>
#include <array>

namespace xpath::detail {

namespace {

struct FunctionInfo {
  std::string_view name;
  Fn fn;
  int minArgs;
  int maxArgs;  // -1: any number
  Kind result;
};

constexpr std::array<FunctionInfo, 27> kFunctions{{
    {"last", Fn::Last, 0, 0, Kind::Number},
    {"position", Fn::Position, 0, 0, Kind::Number},
    {"count", Fn::Count, 1, 1, Kind::Number},
    {"id", Fn::Id, 1, 1, Kind::NodeSet},
    {"local-name", Fn::LocalName, 0, 1, Kind::String},
    {"namespace-uri", Fn::NamespaceUri, 0, 1, Kind::String},
    {"name", Fn::Name, 0, 1, Kind::String},
    {"string", Fn::String, 0, 1, Kind::String},
    {"concat", Fn::Concat, 2, -1, Kind::String},
    {"starts-with", Fn::StartsWith, 2, 2, Kind::Boolean},
    {"contains", Fn::Contains, 2, 2, Kind::Boolean},
    {"substring-before", Fn::SubstringBefore, 2, 2, Kind::String},
    {"substring-after", Fn::SubstringAfter, 2, 2, Kind::String},
    {"substring", Fn::Substring, 2, 3, Kind::String},
    {"string-length", Fn::StringLength, 0, 1, Kind::Number},
    {"normalize-space", Fn::NormalizeSpace, 0, 1, Kind::String},
    {"translate", Fn::Translate, 3, 3, Kind::String},
    {"boolean", Fn::Boolean, 1, 1, Kind::Boolean},
    {"not", Fn::Not, 1, 1, Kind::Boolean},
    {"true", Fn::True, 0, 0, Kind::Boolean},
    {"false", Fn::False, 0, 0, Kind::Boolean},
    {"lang", Fn::Lang, 1, 1, Kind::Boolean},
    {"number", Fn::Number, 0, 1, Kind::Number},
    {"sum", Fn::Sum, 1, 1, Kind::Number},
    {"floor", Fn::Floor, 1, 1, Kind::Number},
    {"ceiling", Fn::Ceiling, 1, 1, Kind::Number},
    {"round", Fn::Round, 1, 1, Kind::Number},
}};

struct AxisInfo {
  std::string_view name;
  Axis axis;
};

constexpr std::array<AxisInfo, 13> kAxes{{
    {"ancestor", Axis::Ancestor},
    {"ancestor-or-self", Axis::AncestorOrSelf},
    {"attribute", Axis::Attribute},
    {"child", Axis::Child},
    {"descendant", Axis::Descendant},
    {"descendant-or-self", Axis::DescendantOrSelf},
    {"following", Axis::Following},
    {"following-sibling", Axis::FollowingSibling},
    {"namespace", Axis::Namespace},
    {"parent", Axis::Parent},
    {"preceding", Axis::Preceding},
    {"preceding-sibling", Axis::PrecedingSibling},
    {"self", Axis::Self},
}};

struct BinaryInfo {
  Tok tok;
  Op op;
  int precedence;
};

constexpr std::array<BinaryInfo, 13> kBinary{{
    {Tok::Or, Op::Or, 1},
    {Tok::And, Op::And, 2},
    {Tok::Eq, Op::Eq, 3},
    {Tok::Ne, Op::Ne, 3},
    {Tok::Lt, Op::Lt, 4},
    {Tok::Le, Op::Le, 4},
    {Tok::Gt, Op::Gt, 4},
    {Tok::Ge, Op::Ge, 4},
    {Tok::Plus, Op::Add, 5},
    {Tok::Minus, Op::Sub, 5},
    {Tok::Multiply, Op::Mul, 6},
    {Tok::Div, Op::Div, 6},
    {Tok::Mod, Op::Mod, 6},
}};

const BinaryInfo* binaryInfo(Tok t) {
  for (const auto& b : kBinary)
    if (b.tok == t) return &b;
  return nullptr;
}

Kind resultKind(Op op) {
  switch (op) {
    case Op::Or:
    case Op::And:
    case Op::Eq:
    case Op::Ne:
    case Op::Lt:
    case Op::Le:
    case Op::Gt:
    case Op::Ge: return Kind::Boolean;
    case Op::Add:
    case Op::Sub:
    case Op::Mul:
    case Op::Div:
    case Op::Mod:
    case Op::Neg:
    case Op::Number: return Kind::Number;
    case Op::Union:
    case Op::Filter:
    case Op::Path: return Kind::NodeSet;
    case Op::Literal: return Kind::String;
    default: return Kind::Any;
  }
}

// Whether `e` depends on the context position or size of the context it is
// evaluated in. Predicates inside it have their own context and are skipped.
bool usesPosition(const Expr& e) {
  if (e.op == Op::Call && (e.fn == Fn::Last || e.fn == Fn::Position)) return true;
  return std::any_of(e.args.begin(), e.args.end(), [](const ExprPtr& a) { return usesPosition(*a); });
}

// A number selects by position; an unknown kind may be a number.
bool isPositional(const Expr& p) { return p.kind == Kind::Number || p.kind == Kind::Any || usesPosition(p); }

// Calls that read the context node, position or size themselves.
bool readsContext(const Expr& call) {
  switch (call.fn) {
    case Fn::Last:
    case Fn::Position:
    case Fn::Lang:
    case Fn::Invalid: return true;
    case Fn::LocalName:
    case Fn::NamespaceUri:
    case Fn::Name:
    case Fn::String:
    case Fn::StringLength:
    case Fn::NormalizeSpace:
    case Fn::Number: return call.args.empty();
    default: return false;
  }
}

// Whether `e` has the same value for every context of one evaluation: the tree
// is the same for all of them, so only relative paths and the context
// functions tell them apart. Predicates have their own context and do not count.
bool isIndependent(const Expr& e) {
  bool argsIndependent = std::all_of(e.args.begin(), e.args.end(), [](const ExprPtr& a) { return a->independent; });
  switch (e.op) {
    case Op::Path: return e.start == PathStart::Root || (e.start == PathStart::Expr && argsIndependent);
    case Op::Call: return argsIndependent && !readsContext(e);
    default: return argsIndependent;
  }
}

// "descendant-or-self::node()/child::x[p]" selects the same nodes as
// "descendant::x[p]" when no predicate looks at positions; the latter is one pass
// over the tree already in document order, so "//x" is rewritten to it.
void fuseDescendantSteps(std::vector<Step>& steps) {
  for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
    Step& s = steps[i];
    Step& next = steps[i + 1];
    if (s.axis != Axis::DescendantOrSelf || s.test != Test::Node || !s.predicates.empty()) continue;
    if (next.axis != Axis::Child || next.positionalFrom != next.predicates.size()) continue;
    next.axis = Axis::Descendant;
    steps.erase(steps.begin() + static_cast<std::ptrdiff_t>(i));
  }
}

class Parser {
 public:
  Parser(std::vector<Token> tokens, std::string& error) : t_(std::move(tokens)), error_(error) {}

  ExprPtr parseAll() {
    ExprPtr e = expr();
    if (e && peek() != Tok::End) return fail("unexpected token '" + std::string(cur().text) + "'");
    return e;
  }

 private:
  const Token& cur() const { return t_[pos_]; }
  Tok peek(std::size_t ahead = 0) const { return pos_ + ahead < t_.size() ? t_[pos_ + ahead].kind : Tok::End; }
  bool accept(Tok k) {
    if (peek() != k) return false;
    ++pos_;
    return true;
  }
  ExprPtr fail(std::string message) {
    if (error_.empty()) error_ = std::move(message);
    return nullptr;
  }
  bool expect(Tok k, const char* what) {
    if (accept(k)) return true;
    fail(std::string("expected ") + what);
    return false;
  }

  // Gives `e` its height from its children; false when that passes the bound.
  bool measure(Expr& e) {
    int h = 0;
    for (const auto& a : e.args) h = std::max(h, a->height);
    for (const auto& p : e.predicates) h = std::max(h, p->height);
    for (const auto& s : e.steps)
      for (const auto& p : s.predicates) h = std::max(h, p->height);
    e.height = h + 1;
    if (e.kind == Kind::Any) e.kind = resultKind(e.op);
    e.independent = isIndependent(e);
    if (e.height <= kMaxNesting) return true;
    fail("expression nested too deeply");
    return false;
  }
  ExprPtr finish(ExprPtr e) { return measure(*e) ? std::move(e) : nullptr; }

  ExprPtr expr() {
    if (++depth_ > kMaxNesting) return fail("expression nested too deeply");
    ExprPtr e = binary();
    --depth_;
    return e;
  }

  // The binary operators, all left-associative. Operands of one precedence
  // level gather into one chain; an open chain per level is kept on a small
  // stack, so a long flat run needs neither recursion nor depth.
  ExprPtr binary() {
    struct Open {
      int precedence;
      ExprPtr chain;
    };
    std::vector<Open> open;
    ExprPtr operand = unary();
    // Completes the innermost chain with `operand`, which becomes the chain.
    auto close = [&] {
      open.back().chain->args.push_back(std::move(operand));
      operand = finish(std::move(open.back().chain));
      open.pop_back();
      return operand != nullptr;
    };
    while (operand) {
      const BinaryInfo* info = binaryInfo(peek());
      if (!info) break;
      ++pos_;
      while (!open.empty() && open.back().precedence > info->precedence)
        if (!close()) return nullptr;
      if (!open.empty() && open.back().precedence == info->precedence) {
        open.back().chain->args.push_back(std::move(operand));
      } else {
        open.push_back({info->precedence, std::make_unique<Expr>(info->op)});
        open.back().chain->args.push_back(std::move(operand));
      }
      open.back().chain->ops.push_back(info->op);
      operand = unary();
    }
    if (!operand) return nullptr;
    while (!open.empty())
      if (!close()) return nullptr;
    return operand;
  }

  ExprPtr unary() {
    int negations = 0;
    while (accept(Tok::Minus)) ++negations;
    ExprPtr e = unionExpr();
    for (; e && negations > 0; --negations) {
      auto neg = std::make_unique<Expr>(Op::Neg);
      neg->args.push_back(std::move(e));
      e = finish(std::move(neg));
    }
    return e;
  }

  ExprPtr unionExpr() {
    ExprPtr first = pathExpr();
    if (!first || peek() != Tok::Pipe) return first;
    auto e = std::make_unique<Expr>(Op::Union);
    e->args.push_back(std::move(first));
    while (accept(Tok::Pipe)) {
      ExprPtr next = pathExpr();
      if (!next) return nullptr;
      e->args.push_back(std::move(next));
    }
    return finish(std::move(e));
  }

  static bool startsPrimary(Tok t) {
    return t == Tok::Variable || t == Tok::LParen || t == Tok::Literal || t == Tok::Number || t == Tok::FunctionName;
  }
  static bool startsStep(Tok t) {
    return t == Tok::NameTest || t == Tok::NodeType || t == Tok::AxisName || t == Tok::At || t == Tok::Dot ||
           t == Tok::DotDot;
  }

  ExprPtr pathExpr() {
    if (!startsPrimary(peek())) return locationPath();
    ExprPtr primary = filterExpr();
    if (!primary || (peek() != Tok::Slash && peek() != Tok::SlashSlash)) return primary;
    auto path = std::make_unique<Expr>(Op::Path);
    path->start = PathStart::Expr;
    path->args.push_back(std::move(primary));
    if (!relativePath(path->steps, false)) return nullptr;
    fuseDescendantSteps(path->steps);
    return finish(std::move(path));
  }

  ExprPtr filterExpr() {
    ExprPtr primary = primaryExpr();
    if (!primary || peek() != Tok::LBracket) return primary;
    auto filter = std::make_unique<Expr>(Op::Filter);
    filter->args.push_back(std::move(primary));
    if (!predicates(filter->predicates)) return nullptr;
    return finish(std::move(filter));
  }

  ExprPtr primaryExpr() {
    const Token& t = cur();
    switch (t.kind) {
      case Tok::Variable: {
        ++pos_;
        auto e = std::make_unique<Expr>(Op::Variable);
        e->text = std::string(t.text);
        return finish(std::move(e));
      }
      case Tok::Literal: {
        ++pos_;
        auto e = std::make_unique<Expr>(Op::Literal);
        e->text = std::string(t.text);
        return finish(std::move(e));
      }
      case Tok::Number: {
        ++pos_;
        auto e = std::make_unique<Expr>(Op::Number);
        e->number = t.number;
        return finish(std::move(e));
      }
      case Tok::LParen: {
        ++pos_;
        ExprPtr e = expr();
        if (!e || !expect(Tok::RParen, "')'")) return nullptr;
        return e;
      }
      default: return call();
    }
  }

  // An unknown name or a wrong number of arguments is an error only when the
  // call is evaluated, so "false() and f()" is false.
  ExprPtr call() {
    std::string_view name = cur().text;
    ++pos_;
    auto e = std::make_unique<Expr>(Op::Call);
    if (!expect(Tok::LParen, "'('")) return nullptr;
    if (!accept(Tok::RParen)) {
      do {
        ExprPtr arg = expr();
        if (!arg) return nullptr;
        e->args.push_back(std::move(arg));
      } while (accept(Tok::Comma));
      if (!expect(Tok::RParen, "')'")) return nullptr;
    }
    auto info =
        std::find_if(kFunctions.begin(), kFunctions.end(), [&](const FunctionInfo& f) { return f.name == name; });
    int n = static_cast<int>(e->args.size());
    if (info == kFunctions.end()) {
      e->fn = Fn::Invalid;
      e->text = "unknown function '" + std::string(name) + "'";
    } else if (n < info->minArgs || (info->maxArgs >= 0 && n > info->maxArgs)) {
      e->fn = Fn::Invalid;
      e->text = "wrong number of arguments to " + std::string(name) + "()";
    } else {
      e->fn = info->fn;
      e->kind = info->result;
    }
    return finish(std::move(e));
  }

  ExprPtr locationPath() {
    auto path = std::make_unique<Expr>(Op::Path);
    if (accept(Tok::Slash)) {
      path->start = PathStart::Root;
      if (startsStep(peek()) && !relativePath(path->steps, true)) return nullptr;
    } else if (peek() == Tok::SlashSlash) {
      path->start = PathStart::Root;
      if (!relativePath(path->steps, false)) return nullptr;
    } else if (!relativePath(path->steps, true)) {
      return nullptr;
    }
    fuseDescendantSteps(path->steps);
    return finish(std::move(path));
  }

  static Step descendantOrSelfNode() {
    Step s;
    s.axis = Axis::DescendantOrSelf;
    s.test = Test::Node;
    return s;
  }

  // Steps separated by '/' or '//'. With `stepFirst` the path begins with a step,
  // else with the separator.
  bool relativePath(std::vector<Step>& steps, bool stepFirst) {
    if (stepFirst && !step(steps)) return false;
    while (peek() == Tok::Slash || peek() == Tok::SlashSlash) {
      if (peek() == Tok::SlashSlash) steps.push_back(descendantOrSelfNode());
      ++pos_;
      if (!step(steps)) return false;
    }
    return true;
  }

  bool step(std::vector<Step>& steps) {
    Step s;
    if (accept(Tok::Dot)) {
      s.axis = Axis::Self;
      steps.push_back(std::move(s));
      return true;
    }
    if (accept(Tok::DotDot)) {
      s.axis = Axis::Parent;
      steps.push_back(std::move(s));
      return true;
    }
    if (peek() == Tok::AxisName) {
      std::string_view name = cur().text;
      auto info = std::find_if(kAxes.begin(), kAxes.end(), [&](const AxisInfo& a) { return a.name == name; });
      if (info == kAxes.end()) {
        fail("unknown axis '" + std::string(name) + "'");
        return false;
      }
      s.axis = info->axis;
      pos_ += 2;  // the name and '::'
    } else if (accept(Tok::At)) {
      s.axis = Axis::Attribute;
    }
    if (!nodeTest(s)) return false;
    if (!predicates(s.predicates)) return false;
    s.positionalFrom = static_cast<std::size_t>(
        std::find_if(s.predicates.begin(), s.predicates.end(), [](const ExprPtr& p) { return isPositional(*p); }) -
        s.predicates.begin());
    steps.push_back(std::move(s));
    return true;
  }

  bool nodeTest(Step& s) {
    const Token& t = cur();
    if (t.kind == Tok::NameTest) {
      ++pos_;
      std::size_t colon = t.text.find(':');
      if (t.text == "*") {
        s.test = Test::AnyName;
      } else if (t.text.back() == '*') {
        s.test = Test::PrefixAny;
        s.name = std::string(t.text.substr(0, t.text.size() - 1));
      } else {
        s.test = Test::Name;
        s.name = std::string(t.text);
      }
      // Only "xml" is bound (to the namespace xml:lang and xml:space live in);
      // TinyXML keeps such names whole, so "xml:lang" matches literally.
      if (colon != std::string_view::npos && t.text.substr(0, colon) != "xml") s.test = Test::Unbound;
      return true;
    }
    if (t.kind != Tok::NodeType) {
      fail("expected a node test");
      return false;
    }
    ++pos_;
    s.test = t.text == "node"      ? Test::Node
             : t.text == "text"    ? Test::Text
             : t.text == "comment" ? Test::Comment
                                   : Test::Pi;
    if (!expect(Tok::LParen, "'('")) return false;
    if (s.test == Test::Pi && peek() == Tok::Literal) ++pos_;
    return expect(Tok::RParen, "')'");
  }

  bool predicates(std::vector<ExprPtr>& out) {
    while (accept(Tok::LBracket)) {
      ExprPtr p = expr();
      if (!p || !expect(Tok::RBracket, "']'")) return false;
      assignCacheSlots(*p);
      out.push_back(std::move(p));
    }
    return true;
  }

  // A predicate runs once per node it tests; its largest parts that do not
  // depend on that node get a cache slot so they are evaluated once. Nested
  // predicates were given theirs when they were parsed.
  void assignCacheSlots(Expr& e) {
    if (e.independent) {
      if (e.op != Op::Literal && e.op != Op::Number && e.op != Op::Variable) e.cacheSlot = cacheSlots_++;
      return;
    }
    for (auto& a : e.args) assignCacheSlots(*a);
  }

 public:
  int cacheSlots() const { return cacheSlots_; }

 private:
  std::vector<Token> t_;
  std::size_t pos_ = 0;
  int depth_ = 0;
  int cacheSlots_ = 0;
  std::string& error_;
};

}  // namespace

ExprPtr parse(std::string_view text, std::string& error, int& cacheSlots) {
  error.clear();
  cacheSlots = 0;
  std::vector<Token> tokens;
  if (!tokenize(text, tokens, error)) return nullptr;
  Parser parser(std::move(tokens), error);
  ExprPtr root = parser.parseAll();
  cacheSlots = parser.cacheSlots();
  return root;
}

}  // namespace xpath::detail
