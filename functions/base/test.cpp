#include "engine/ascii.h"
#include "engine/integer.h"
#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

bool FunctionTest::readAttributes() {
  std::wstring op, type;
  if (!readText(L"operator", op) || !readText(L"type", type) || !readText(L"left", left_) ||
      !readText(L"right", right_))
    return false;
  if (op == L"<=")
    operator_ = LessOrEqual;
  else if (op == L"==")
    operator_ = Equal;
  else if (op == L"<")
    operator_ = Less;
  else
    return false;
  if (type == L"string")
    type_ = String;
  else if (type == L"number")
    type_ = Number;
  else
    return false;
  return true;
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
