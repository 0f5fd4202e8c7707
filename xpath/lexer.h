// Splits an expression into tokens by the recommendation's lexical rules,
// including the rules that tell an operator name or '*' from a name test.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace xpath::detail {

enum class Tok {
  End,
  LParen,
  RParen,
  LBracket,
  RBracket,
  Dot,
  DotDot,
  At,
  Comma,
  ColonColon,
  Slash,
  SlashSlash,
  Pipe,
  Plus,
  Minus,
  Eq,
  Ne,
  Lt,
  Le,
  Gt,
  Ge,
  Multiply,
  And,
  Or,
  Mod,
  Div,
  NameTest,      // text is "*", "prefix:*" or a QName
  NodeType,      // comment, text, processing-instruction, node (followed by '(')
  FunctionName,  // any other QName followed by '('
  AxisName,      // followed by '::'
  Literal,       // text is the literal without its quotes
  Number,        // number holds the value
  Variable,      // text is the QName after '$'
};

struct Token {
  Tok kind = Tok::End;
  std::string_view text;
  double number = 0;
};

// Tokens of `expr`, ending with Tok::End; false with a message on a lexical error.
bool tokenize(std::string_view expr, std::vector<Token>& out, std::string& error);

}  // namespace xpath::detail
