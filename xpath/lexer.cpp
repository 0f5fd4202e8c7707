#include "lexer.h"

#include "xpath.h"

namespace xpath::detail {

namespace {

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Bytes of multi-byte UTF-8 sequences are all accepted as name characters:
// TinyXML keeps names as UTF-8 and does not check them either.
bool isNameStart(char c) {
  unsigned char u = static_cast<unsigned char>(c);
  return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || u == '_' || u >= 0x80;
}
bool isNameChar(char c) { return isNameStart(c) || isDigit(c) || c == '-' || c == '.'; }

class Lexer {
 public:
  Lexer(std::string_view s, std::vector<Token>& out) : s_(s), out_(out) {}

  bool run(std::string& error) {
    while (true) {
      skipSpace();
      if (pos_ >= s_.size()) break;
      if (!next(error)) return false;
    }
    out_.push_back(Token{Tok::End, {}, 0});
    return true;
  }

 private:
  void skipSpace() {
    while (pos_ < s_.size() && isSpace(s_[pos_])) ++pos_;
  }
  char at(std::size_t i) const { return i < s_.size() ? s_[i] : '\0'; }

  // True when the previous token makes '*' a multiplication and a name an operator.
  bool afterOperand() const {
    if (out_.empty()) return false;
    switch (out_.back().kind) {
      case Tok::At:
      case Tok::ColonColon:
      case Tok::LParen:
      case Tok::LBracket:
      case Tok::Comma:
      case Tok::Slash:
      case Tok::SlashSlash:
      case Tok::Pipe:
      case Tok::Plus:
      case Tok::Minus:
      case Tok::Eq:
      case Tok::Ne:
      case Tok::Lt:
      case Tok::Le:
      case Tok::Gt:
      case Tok::Ge:
      case Tok::Multiply:
      case Tok::And:
      case Tok::Or:
      case Tok::Mod:
      case Tok::Div: return false;
      default: return true;
    }
  }

  void emit(Tok kind, std::size_t len) {
    out_.push_back(Token{kind, s_.substr(pos_, len), 0});
    pos_ += len;
  }

  std::size_t ncnameEnd(std::size_t i) const {
    if (!isNameStart(at(i))) return i;
    while (isNameChar(at(i))) ++i;
    return i;
  }

  bool next(std::string& error) {
    char c = s_[pos_];
    switch (c) {
      case '(': emit(Tok::LParen, 1); return true;
      case ')': emit(Tok::RParen, 1); return true;
      case '[': emit(Tok::LBracket, 1); return true;
      case ']': emit(Tok::RBracket, 1); return true;
      case '@': emit(Tok::At, 1); return true;
      case ',': emit(Tok::Comma, 1); return true;
      case '|': emit(Tok::Pipe, 1); return true;
      case '+': emit(Tok::Plus, 1); return true;
      case '-': emit(Tok::Minus, 1); return true;
      case '=': emit(Tok::Eq, 1); return true;
      case '/': at(pos_ + 1) == '/' ? emit(Tok::SlashSlash, 2) : emit(Tok::Slash, 1); return true;
      case '<': at(pos_ + 1) == '=' ? emit(Tok::Le, 2) : emit(Tok::Lt, 1); return true;
      case '>': at(pos_ + 1) == '=' ? emit(Tok::Ge, 2) : emit(Tok::Gt, 1); return true;
      case '!':
        if (at(pos_ + 1) != '=') break;
        emit(Tok::Ne, 2);
        return true;
      case ':':
        if (at(pos_ + 1) != ':') break;
        emit(Tok::ColonColon, 2);
        return true;
      case '*': emit(afterOperand() ? Tok::Multiply : Tok::NameTest, 1); return true;
      case '"':
      case '\'': return literal(error);
      case '$': return variable(error);
      case '.':
        if (at(pos_ + 1) == '.') {
          emit(Tok::DotDot, 2);
          return true;
        }
        if (isDigit(at(pos_ + 1))) return number();
        emit(Tok::Dot, 1);
        return true;
      default:
        if (isDigit(c)) return number();
        if (isNameStart(c)) return name(error);
        break;
    }
    error = "unexpected character at offset " + std::to_string(pos_);
    return false;
  }

  bool literal(std::string& error) {
    std::size_t close = s_.find(s_[pos_], pos_ + 1);
    if (close == std::string_view::npos) {
      error = "unterminated literal";
      return false;
    }
    out_.push_back(Token{Tok::Literal, s_.substr(pos_ + 1, close - pos_ - 1), 0});
    pos_ = close + 1;
    return true;
  }

  bool number() {
    std::size_t end = pos_;
    while (isDigit(at(end))) ++end;
    if (at(end) == '.') {
      ++end;
      while (isDigit(at(end))) ++end;
    }
    std::string_view text = s_.substr(pos_, end - pos_);
    out_.push_back(Token{Tok::Number, text, stringToNumber(text)});
    pos_ = end;
    return true;
  }

  // QName = NCName (':' NCName)?; a single ':' before '*' makes "prefix:*".
  std::size_t qnameEnd(std::size_t i, bool allowStar) const {
    std::size_t end = ncnameEnd(i);
    if (end == i || at(end) != ':' || at(end + 1) == ':') return end;
    if (allowStar && at(end + 1) == '*') return end + 2;
    std::size_t local = ncnameEnd(end + 1);
    return local > end + 1 ? local : end;
  }

  bool variable(std::string& error) {
    std::size_t end = qnameEnd(pos_ + 1, false);
    if (end == pos_ + 1) {
      error = "variable name expected after '$'";
      return false;
    }
    out_.push_back(Token{Tok::Variable, s_.substr(pos_ + 1, end - pos_ - 1), 0});
    pos_ = end;
    return true;
  }

  bool name(std::string&) {
    if (afterOperand()) {
      std::size_t end = ncnameEnd(pos_);
      std::string_view word = s_.substr(pos_, end - pos_);
      Tok op = word == "and"   ? Tok::And
               : word == "or"  ? Tok::Or
               : word == "mod" ? Tok::Mod
               : word == "div" ? Tok::Div
                               : Tok::End;
      if (op != Tok::End) {
        emit(op, end - pos_);
        return true;
      }
    }
    std::size_t end = qnameEnd(pos_, true);
    std::string_view word = s_.substr(pos_, end - pos_);
    std::size_t after = end;
    while (after < s_.size() && isSpace(s_[after])) ++after;
    if (word.back() != '*' && at(after) == '(') {
      bool nodeType = word == "comment" || word == "text" || word == "node" || word == "processing-instruction";
      emit(nodeType ? Tok::NodeType : Tok::FunctionName, end - pos_);
      return true;
    }
    if (word.find(':') == std::string_view::npos && at(after) == ':' && at(after + 1) == ':') {
      emit(Tok::AxisName, end - pos_);
      return true;
    }
    emit(Tok::NameTest, end - pos_);
    return true;
  }

  std::string_view s_;
  std::vector<Token>& out_;
  std::size_t pos_ = 0;
};

}  // namespace

bool tokenize(std::string_view expr, std::vector<Token>& out, std::string& error) {
  out.clear();
  return Lexer(expr, out).run(error);
}

}  // namespace xpath::detail
