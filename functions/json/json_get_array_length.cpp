#include "engine/log_lines.h"
#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonGetArrayLength for array %s into var %s"};
constexpr engine::LogLine kHandleDoesNotRefer{L"jsonGetArrayLength handle %s does not refer to a JSON array"};

}  // namespace

const Parameters& FunctionJsonGetArrayLength::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonGetArrayLength::handle_>(L"handle"),
      engine::variable<&FunctionJsonGetArrayLength::var_>(L"var")};
  return list;
}

void FunctionJsonGetArrayLength::execute() {
  engine::log(kStart, handle_.c_str(), var_.c_str());
  const picojson::value* array = helpers::findJsonOf<picojson::array>(handles(), handle_);
  if (!array) {
    engine::log(kHandleDoesNotRefer, handle_.c_str());
    return end(false);
  }
  variables().set(var_, std::to_wstring(array->get<picojson::array>().size()));
  end(true);
}

const engine::TagDoc FunctionJsonGetArrayLength::doc{
    L"Stores in `var` the number of elements of the array under `handle`, a document or a node.",
    {kStart, kHandleDoesNotRefer, engine::kSubjectEnd.as(L"jsonGetArrayLength")},
    L"True: `var` holds the length. False: `handle` holds no JSON array (or is a node whose value is gone); `var` is unchanged.",
    L"<jsonOpen path=\"%enginedir%servers.json\" handle=\"servers\"/>\n<jsonGetArrayLength handle=\"servers\" var=\"count\"/>\n<trace value=\"%count% servers\"/>"};

}  // namespace api::json
