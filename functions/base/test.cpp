#include "engine/ascii.h"
#include "engine/integer.h"
#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/base/functions.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"test function called ('%s' %d '%s'). type: %d"};

}  // namespace

const Parameters& FunctionTest::parameters() {
  static const Parameters list = {engine::choice<&FunctionTest::operator_>(L"operator", {L"<=", L"==", L"<"}),
                                  engine::choice<&FunctionTest::type_>(L"type", {L"string", L"number"}),
                                  engine::text<&FunctionTest::left_>(L"left"), engine::text<&FunctionTest::right_>(L"right")};
  return list;
}

void FunctionTest::execute() {
  const std::wstring left = expand(left_), right = expand(right_);
  engine::log(kStart, left.c_str(), operator_, right.c_str(), type_);
  // Reduce both types to a signed comparison against zero.
  long long difference = 0;
  if (type_ == String) {
    difference = engine::compareIgnoreAsciiCase(left, right);
  } else {
    difference = static_cast<long long>(engine::toInt(left)) - engine::toInt(right);
  }
  switch (operator_) {
    case LessOrEqual: finish(difference <= 0); break;
    case Equal: finish(difference == 0); break;
    case Less: finish(difference < 0); break;
  }
}

const engine::TagDoc FunctionTest::doc{
    L"Compares `left` with `right`, both expanded when it runs, by `operator` (`<=`, `==` or `<`; write `&lt;` in XML; for the others swap the sides) as `type` `string` (code unit by code unit, ignoring the case of A-Z only) or `number` (leading decimal digits with an optional sign: `12abc` is 12, no digits 0). Its first log line shows the operator as `0` (`<=`), `1` (`==`) or `2` (`<`) and the type as `0` (string) or `1` (number).",
    {kStart, engine::kBoolEnd.as(L"test")},
    L"True when the comparison holds, False when it does not.",
    L"<iniGetValue path=\"C:\\Program Files\\App\\app.ini\" section=\"app\" key=\"version\" var=\"version\" default=\"0\"/>\n<test left=\"%version%\" operator=\"&lt;\" right=\"24\" type=\"number\">\n  <onTrue><trace value=\"App needs the update\"/></onTrue>\n</test>"};

}  // namespace api::base
