// Recursive-descent parser from tokens to the expression tree.
#pragma once

#include "ast.h"

#include <string>
#include <string_view>

namespace xpath::detail {

// The tree of `text`, or nullptr with a message in `error`. Nesting deeper than
// kMaxNesting is refused so neither parsing nor evaluation can exhaust the stack.
// `cacheSlots` receives the number of cache slots the tree's expressions use.
ExprPtr parse(std::string_view text, std::string& error, int& cacheSlots);

}  // namespace xpath::detail
