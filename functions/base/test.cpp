#include "engine/ascii.h"
#include "engine/integer.h"
#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionTest::parameters() {
  static const Parameters list = {engine::choice<&FunctionTest::operator_>(L"operator", {L"<=", L"==", L"<"}),
                                  engine::choice<&FunctionTest::type_>(L"type", {L"string", L"number"}),
                                  engine::text<&FunctionTest::left_>(L"left"), engine::text<&FunctionTest::right_>(L"right")};
  return list;
}

void FunctionTest::execute() {
  const std::wstring left = expand(left_), right = expand(right_);
  engine::log(L"test function called ('%s' %d '%s'). type: %d", left.c_str(), operator_, right.c_str(), type_);
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

}  // namespace api::base
