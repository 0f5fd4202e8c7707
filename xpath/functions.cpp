// The core function library.
#include "evaluator.h"
#include "utf8.h"

#include <cmath>
#include <vector>

namespace xpath::detail {

namespace {

bool isXmlSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string normalizeSpace(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (std::size_t i = 0; i < s.size();) {
    while (i < s.size() && isXmlSpace(s[i])) ++i;
    std::size_t start = i;
    while (i < s.size() && !isXmlSpace(s[i])) ++i;
    if (i == start) break;
    if (!out.empty()) out += ' ';
    out.append(s, start, i - start);
  }
  return out;
}

// Characters at positions p with round(start) <= p < round(start) + round(length),
// counting from 1; NaN bounds select nothing.
std::string substring(std::string_view s, double start, double length, bool hasLength) {
  double first = roundHalfUp(start);
  double end = hasLength ? first + roundHalfUp(length) : INFINITY;
  std::string out;
  double position = 1;
  for (std::size_t i = 0; i < s.size(); position += 1) {
    std::size_t len = characterLength(s, i);
    if (position >= first && position < end) out.append(s, i, len);
    i += len;
  }
  return out;
}

std::vector<std::string_view> characters(std::string_view s) {
  std::vector<std::string_view> out;
  for (std::size_t i = 0; i < s.size();) {
    std::size_t len = characterLength(s, i);
    out.push_back(s.substr(i, len));
    i += len;
  }
  return out;
}

std::string translate(std::string_view s, std::string_view from, std::string_view to) {
  std::vector<std::string_view> fromChars = characters(from), toChars = characters(to);
  std::string out;
  out.reserve(s.size());
  for (std::size_t i = 0; i < s.size();) {
    std::string_view ch = s.substr(i, characterLength(s, i));
    i += ch.size();
    std::size_t k = 0;
    while (k < fromChars.size() && fromChars[k] != ch) ++k;
    if (k == fromChars.size())
      out += ch;
    else if (k < toChars.size())
      out += toChars[k];
  }
  return out;
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// lang(): the nearest xml:lang on the context node or an ancestor is `lang` or
// a sub-language of it, ignoring ASCII case.
bool langMatches(const Node& ctx, std::string_view lang) {
  for (const TiXmlNode* n = ctx.node; n; n = n->Parent()) {  // an attribute starts at its element
    const TiXmlElement* e = n->ToElement();
    if (!e) continue;
    const std::string* value = e->Attribute(std::string("xml:lang"));
    if (!value) continue;
    if (value->size() < lang.size()) return false;
    for (std::size_t i = 0; i < lang.size(); ++i)
      if (lower((*value)[i]) != lower(lang[i])) return false;
    return value->size() == lang.size() || (*value)[lang.size()] == '-';
  }
  return false;
}

std::string_view localName(std::string_view name) {
  std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

}  // namespace

Value Evaluator::call(const Expr& e, const Context& c) {
  const auto& a = e.args;
  // Arguments as views; each argument read this way has its own scratch.
  std::string scratch[2];
  auto str = [&](std::size_t i) { return stringOf(*a[i], c, scratch[i]); };
  auto num = [&](std::size_t i) { return evalNumber(*a[i], c); };
  // The node a name function looks at: the argument's first node, or the context node.
  auto nameNode = [&](Node& out) {
    if (a.empty()) {
      out = c.node;
      return true;
    }
    std::optional<Node> first = firstNode(*a[0], c);
    if (first) out = *first;
    return first.has_value();
  };
  // String argument, or the context node's string-value when it is left out.
  auto strOrContext = [&]() { return a.empty() ? stringValue(c.node, scratch[0]) : str(0); };

  switch (e.fn) {
    case Fn::Invalid: throw EvalError(e.text);
    case Fn::Last: return Value(static_cast<double>(c.size));
    case Fn::Position: return Value(static_cast<double>(c.position));
    case Fn::Count: return Value(static_cast<double>(count(*a[0], c)));
    case Fn::Id:
      // Without a DTD no attribute is of type ID.
      (void)eval(*a[0], c);
      return Value(NodeSet{});
    case Fn::LocalName: {
      Node n;
      return Value(std::string(nameNode(n) ? localName(nameOf(n)) : std::string_view{}));
    }
    case Fn::NamespaceUri: {
      Node n;
      (void)nameNode(n);
      return Value(std::string());
    }
    case Fn::Name: {
      Node n;
      return Value(std::string(nameNode(n) ? nameOf(n) : std::string_view{}));
    }
    case Fn::String: return Value(std::string(strOrContext()));
    case Fn::Concat: {
      std::string out;
      for (const ExprPtr& arg : a) out += stringOf(*arg, c, scratch[0]);
      return Value(std::move(out));
    }
    case Fn::StartsWith: {
      std::string_view s = str(0), prefix = str(1);
      return Value(sameText(s.substr(0, prefix.size()), prefix));
    }
    case Fn::Contains: {
      std::string_view s = str(0), part = str(1);
      return Value(s.find(part) != std::string_view::npos);
    }
    case Fn::SubstringBefore: {
      std::string_view s = str(0), t = str(1);
      std::size_t at = s.find(t);
      return Value(std::string(at == std::string_view::npos ? std::string_view() : s.substr(0, at)));
    }
    case Fn::SubstringAfter: {
      std::string_view s = str(0), t = str(1);
      std::size_t at = s.find(t);
      return Value(std::string(at == std::string_view::npos ? std::string_view() : s.substr(at + t.size())));
    }
    case Fn::Substring: {
      std::string_view s = str(0);
      double start = num(1);
      bool hasLength = a.size() == 3;
      return Value(substring(s, start, hasLength ? num(2) : 0, hasLength));
    }
    case Fn::StringLength: return Value(static_cast<double>(countCharacters(strOrContext())));
    case Fn::NormalizeSpace: return Value(normalizeSpace(strOrContext()));
    case Fn::Translate: {
      std::string_view s = str(0), from = str(1);
      std::string to = evalString(*a[2], c);
      return Value(translate(s, from, to));
    }
    case Fn::Boolean: return Value(evalBoolean(*a[0], c));
    case Fn::Not: return Value(!evalBoolean(*a[0], c));
    case Fn::True: return Value(true);
    case Fn::False: return Value(false);
    case Fn::Lang: return Value(langMatches(c.node, str(0)));
    case Fn::Number: return Value(a.empty() ? stringToNumber(strOrContext()) : num(0));
    case Fn::Sum: {
      double total = 0;
      std::string scratch;
      auto add = [&](const Node& n) {
        total += stringToNumber(stringValue(n, scratch));
        return true;
      };
      eachNode(*a[0], c, add);
      return Value(total);
    }
    case Fn::Floor: return Value(std::floor(num(0)));
    case Fn::Ceiling: return Value(std::ceil(num(0)));
    case Fn::Round: return Value(roundHalfUp(num(0)));
  }
  throw EvalError("unknown function");
}

}  // namespace xpath::detail
