#include "engine/log_lines.h"
#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonGetTypeFromArray for handle %s index %s into variable %s"};

}  // namespace

const Parameters& FunctionJsonGetTypeFromArray::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetTypeFromArray::handle_>(L"handle"),
      engine::text<&FunctionJsonGetTypeFromArray::index_>(L"index"),
      engine::variable<&FunctionJsonGetTypeFromArray::var_>(L"var")};
  return list;
}

void FunctionJsonGetTypeFromArray::execute() {
  const std::wstring index = expand(index_);
  engine::log(kStart, handle_.c_str(), index.c_str(), var_.c_str());
  const std::optional<helpers::JsonLocation> element = elementByIndex(handle_, index);
  if (!element) return end(false);
  variables().set(var_, helpers::typeName(*element->value));
  end(true);
}

const engine::TagDoc FunctionJsonGetTypeFromArray::doc{
    L"Stores in `var` the type of element `index` of the array under `handle`: `object`, `array`, `string`, `boolean`, `number` or `null`. `index` is expanded when it runs and read like `stoi` (`2abc` is 2); 0 is the first element.",
    {kStart, helpers::kNotAnArray, helpers::kNotAnIndex, helpers::kOutOfBounds,
     engine::kSubjectEnd.as(L"jsonGetTypeFromArray")},
    L"True: `var` holds the type. False: `handle` holds no JSON array, or `index` has no digits or lies outside it; `var` is unchanged.",
    L"<jsonOpen path=\"%enginedir%servers.json\" handle=\"servers\"/>\n<jsonGetTypeFromArray handle=\"servers\" index=\"0\" var=\"type\"/>"};

}  // namespace api::json
