#include "engine/log_lines.h"
#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonGetScalarFromArray %s at index %s"};
constexpr engine::LogLine kIndexInArrayDoes{L"jsonGetScalarFromArray index %d in array %s does not contain a scalar"};

}  // namespace

const Parameters& FunctionJsonGetScalarFromArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetScalarFromArray::handle_>(L"handle"),
      engine::text<&FunctionJsonGetScalarFromArray::index_>(L"index"),
      engine::variable<&FunctionJsonGetScalarFromArray::var_>(L"var")};
  return list;
}

void FunctionJsonGetScalarFromArray::execute() {
  const std::wstring indexText = expand(index_);
  engine::log(kStart, handle_.c_str(), indexText.c_str());
  int index = 0;
  const std::optional<helpers::JsonLocation> element = elementByIndex(handle_, indexText, &index);
  if (!element) return end(false);
  if (!helpers::isScalar(*element->value)) {
    engine::log(kIndexInArrayDoes, index, handle_.c_str());
    return end(false);
  }
  variables().set(var_, helpers::scalarText(*element->value));
  end(true);
}

const engine::TagDoc FunctionJsonGetScalarFromArray::doc{
    L"Stores in `var` the boolean, number or string at element `index` of the array under `handle`, as `jsonGetScalarFromObject` writes it. `index` is expanded when it runs and read like `stoi` (`2abc` is 2); 0 is the first element.",
    {kStart, helpers::kNotAnArray, helpers::kNotAnIndex, helpers::kOutOfBounds, kIndexInArrayDoes,
     engine::kSubjectEnd.as(L"jsonGetScalarFromArray")},
    L"True: `var` holds the value. False: `handle` holds no JSON array, `index` has no digits or lies outside it, or the element is an object, an array or `null`; `var` is unchanged.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonGetArrayFromObject objectHandle=\"cfg\" arrayHandle=\"hosts\" xpath=\"server/hosts\"/>\n<jsonGetScalarFromArray handle=\"hosts\" index=\"0\" var=\"primary\"/>"};

}  // namespace api::json
