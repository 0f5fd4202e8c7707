#include "engine/integer.h"
#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"AddInt value '%s' to the variable %s"};

}  // namespace

const Parameters& FunctionAddInt::parameters() {
  static const Parameters list = {engine::variable<&FunctionAddInt::var_>(L"var", Need::NonEmpty),
                                  engine::text<&FunctionAddInt::value_>(L"value", Need::NonEmpty)};
  return list;
}

void FunctionAddInt::execute() {
  const std::wstring value = expand(value_);
  engine::log(kStart, value.c_str(), var_.c_str());
  // 32-bit addition that wraps around, as the scripts' counters always have.
  const uint32_t sum =
      static_cast<uint32_t>(engine::toInt(variables().get(var_))) + static_cast<uint32_t>(engine::toInt(value));
  variables().set(var_, std::to_wstring(static_cast<int32_t>(sum)));
}

const engine::TagDoc FunctionAddInt::doc{
    L"Adds `value`, expanded when it runs, to the number in the variable `var` and stores the sum. Both are read as leading decimal digits with an optional sign (`12abc` is 12; no digits, or a missing variable, is 0), and the 32-bit sum wraps around (`2147483647` + 1 is `-2147483648`).",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<assign var=\"tries\" value=\"0\"/>\n<addInt var=\"tries\" value=\"1\"/>"};

}  // namespace api::base
