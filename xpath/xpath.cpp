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

Expression::Expression(std::unique_ptr<detail::Expr> root) : root_(std::move(root)) {}
Expression::Expression(Expression&&) noexcept = default;
Expression& Expression::operator=(Expression&&) noexcept = default;
Expression::~Expression() = default;

std::optional<Expression> Expression::compile(std::string_view text, std::string* error) {
  try {
    std::string message;
    detail::ExprPtr root = detail::parse(text, message);
    if (!root) {
      if (error) *error = message;
      return std::nullopt;
    }
    return Expression(std::move(root));
  } catch (const std::bad_alloc&) {
    if (error) *error = "out of memory";
    return std::nullopt;
  }
}

std::optional<Value> Expression::evaluate(const TiXmlNode& context, const Limits& limits) const {
  try {
    detail::Evaluator evaluator(limits);
    return evaluator.eval(*root_, detail::Context{detail::fromTiXml(context), 1, 1});
  } catch (const std::exception&) {  // EvalError, bad_alloc, length_error
    return std::nullopt;
  }
}

namespace {

std::optional<Value> run(std::string_view expression, const TiXmlNode& context) {
  std::optional<Expression> compiled = Expression::compile(expression);
  if (!compiled) return std::nullopt;
  return compiled->evaluate(context);
}

const Node* firstOf(const std::optional<Value>& v) {
  if (!v || v->type() != Value::Type::NodeSet || v->nodes().empty()) return nullptr;
  return &v->nodes().front();
}

}  // namespace

const TiXmlNode* firstNode(std::string_view expression, const TiXmlNode& context) {
  std::optional<Value> v = run(expression, context);
  const Node* n = firstOf(v);
  return n && !n->isAttribute() ? n->node : nullptr;
}

// The evaluator reads the tree only; handing back write access to a node of a
// tree the caller may write is safe.
TiXmlNode* firstNode(std::string_view expression, TiXmlNode& context) {
  return const_cast<TiXmlNode*>(firstNode(expression, static_cast<const TiXmlNode&>(context)));
}

TiXmlAttribute* firstAttribute(std::string_view expression, const TiXmlNode& context) {
  std::optional<Value> v = run(expression, context);
  const Node* n = firstOf(v);
  return n && n->isAttribute() ? const_cast<TiXmlAttribute*>(n->attribute) : nullptr;
}

std::optional<std::string> evaluateString(std::string_view expression, const TiXmlNode& context) {
  try {
    std::optional<Value> v = run(expression, context);
    if (!v) return std::nullopt;
    return v->toString();
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace xpath
