#include "engine/integer.h"
#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"assignToken value '%s', index %d, regexp %s to the variable %s"};
constexpr engine::LogLine kTokenNotFound{L"token not found"};
constexpr engine::LogLine kFoundToken{L"found token %s"};

}  // namespace

const Parameters& FunctionAssignToken::parameters() {
  static const Parameters list = {engine::variable<&FunctionAssignToken::var_>(L"var", Need::NonEmpty),
                                  engine::text<&FunctionAssignToken::value_>(L"value"),
                                  engine::literal<&FunctionAssignToken::pattern_>(L"regexp"),
                                  engine::text<&FunctionAssignToken::index_>(L"index")};
  return list;
}

// The pattern is compiled once; one that does not compile refuses the script.
bool FunctionAssignToken::readAttributes() {
  if (!readParameters()) return false;
  regex_ = engine::Regex::compile(pattern_);
  return regex_ != nullptr;
}

void FunctionAssignToken::execute() {
  const std::wstring value = expand(value_);
  const int32_t index = engine::toInt(expand(index_));
  engine::log(kStart, value.c_str(), index, pattern_.c_str(), var_.c_str());
  variables().set(var_, L"");
  const auto groups = regex_->match(value);
  if (!groups || index < 0 || static_cast<size_t>(index) >= groups->size()) {
    engine::log(kTokenNotFound);
    return;
  }
  const std::wstring& token = (*groups)[static_cast<size_t>(index)];
  engine::log(kFoundToken, token.c_str());
  variables().set(var_, token);
}

const engine::TagDoc FunctionAssignToken::doc{
    L"Matches the ECMAScript expression `regexp` (taken as written and compiled when the script is prepared: one that does not compile refuses the script) against the whole of `value` and stores capture group `index` in `var` (`0`: the whole match). `value` and `index` are expanded when it runs, `index` read as leading digits. No match, a group that does not exist, or a match too complex to decide leaves `var` empty.",
    {kStart, kTokenNotFound, kFoundToken},
    L"No result: a plain function has no handlers.",
    L"<assign var=\"version\" value=\"24.3.1\"/>\n<assignToken var=\"major\" value=\"%version%\" regexp=\"(\\d+)\\.(\\d+).*\" index=\"1\"/>"};

}  // namespace api::base
