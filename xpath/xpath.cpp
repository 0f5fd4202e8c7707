// The public entry points: compiled expressions, values, and the three
// operations the XML functions use. Every failure inside becomes an empty result.
#include "xpath.h"

#include "evaluator.h"
#include "parser.h"

#include <new>

namespace xpath {

bool Value::toBoolean() const {
  switch (type_) {
    case Type::NodeSet: return !nodes_.empty();
    case Type::Boolean: return boolean_;
    case Type::Number: return number_ != 0 && number_ == number_;
    case Type::String: return !string_.empty();
  }
  return false;
}

double Value::toNumber() const {
  switch (type_) {
    case Type::Boolean: return boolean_ ? 1 : 0;
    case Type::Number: return number_;
    case Type::String: return stringToNumber(string_);
    case Type::NodeSet: return stringToNumber(toString());
  }
  return 0;
}

std::string Value::toString() const {
  switch (type_) {
    case Type::Boolean: return boolean_ ? "true" : "false";
    case Type::Number: return numberToString(number_);
    case Type::String: return string_;
    case Type::NodeSet: {
      std::string s;
      if (!nodes_.empty()) detail::appendStringValue(nodes_.front(), s);
      return s;
    }
  }
  return {};
}

Expression::Expression(std::unique_ptr<detail::Expr> root, int cacheSlots)
    : root_(std::move(root)), cacheSlots_(cacheSlots) {}
Expression::Expression(Expression&&) noexcept = default;
Expression& Expression::operator=(Expression&&) noexcept = default;
Expression::~Expression() = default;

std::optional<Expression> Expression::compile(std::string_view text, std::string* error) {
  try {
    std::string message;
    int cacheSlots = 0;
    detail::ExprPtr root = detail::parse(text, message, cacheSlots);
    if (!root) {
      if (error) *error = message;
      return std::nullopt;
    }
    return Expression(std::move(root), cacheSlots);
  } catch (const std::bad_alloc&) {
    if (error) *error = "out of memory";
    return std::nullopt;
  }
}

std::optional<Value> Expression::evaluate(const TiXmlNode& context, const Limits& limits) const {
  try {
    detail::Evaluator evaluator(limits, cacheSlots_);
    return evaluator.eval(*root_, detail::Context{detail::fromTiXml(context), 1, 1});
  } catch (const std::exception&) {  // EvalError, bad_alloc, length_error
    return std::nullopt;
  }
}

std::optional<Node> Expression::first(const TiXmlNode& context, const Limits& limits) const {
  try {
    if (root_->kind != detail::Kind::NodeSet && root_->kind != detail::Kind::Any) return std::nullopt;
    detail::Evaluator evaluator(limits, cacheSlots_);
    return evaluator.firstNode(*root_, detail::Context{detail::fromTiXml(context), 1, 1});
  } catch (const std::exception&) {  // also a result that is no node-set
    return std::nullopt;
  }
}

std::optional<std::string> Expression::evaluateString(const TiXmlNode& context, const Limits& limits) const {
  try {
    detail::Evaluator evaluator(limits, cacheSlots_);
    return evaluator.evalString(*root_, detail::Context{detail::fromTiXml(context), 1, 1});
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

namespace {

std::optional<Node> first(std::string_view expression, const TiXmlNode& context) {
  std::optional<Expression> compiled = Expression::compile(expression);
  if (!compiled) return std::nullopt;
  return compiled->first(context);
}

}  // namespace

const TiXmlNode* firstNode(std::string_view expression, const TiXmlNode& context) {
  std::optional<Node> n = first(expression, context);
  return n && !n->isAttribute() ? n->node : nullptr;
}

// The evaluator reads the tree only; handing back write access to a node of a
// tree the caller may write is safe.
TiXmlNode* firstNode(std::string_view expression, TiXmlNode& context) {
  return const_cast<TiXmlNode*>(firstNode(expression, static_cast<const TiXmlNode&>(context)));
}

TiXmlAttribute* firstAttribute(std::string_view expression, const TiXmlNode& context) {
  std::optional<Node> n = first(expression, context);
  return n && n->isAttribute() ? const_cast<TiXmlAttribute*>(n->attribute) : nullptr;
}

std::optional<std::string> evaluateString(std::string_view expression, const TiXmlNode& context) {
  std::optional<Expression> compiled = Expression::compile(expression);
  if (!compiled) return std::nullopt;
  return compiled->evaluateString(context);
}

}  // namespace xpath
