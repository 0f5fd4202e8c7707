// libFuzzer target for the JSON functions: the path walk, the queries and the
// edits over picojson documents. The input's first line is a JSON text, parsed
// as jsonOpen parses a file and stored under the handle "d"; every further
// line is one function call: its first byte picks the function (modulo the
// count; the seeds use "D" for the first, "E" for the second...), and the rest,
// split at tabs, gives its attributes in the order listed below. The calls run
// through the engine for a bounded number of steps.
#include <tinyxml.h>

#include <cstddef>
#include <cstdint>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <initializer_list>
#include <string>
#include <string_view>

#include "engine/engine.h"
#include "functions/families.h"
#include "functions/json/functions.h"
#include "functions/json/detail/json_file.h"
#include "platform/text.h"

namespace {

constexpr size_t kMaxInput = 2048;
constexpr int kMaxSteps = 1000;

using namespace api::json;

// Parses `text` into a document under `handle`, as jsonOpen does with a file's text.
class FunctionJsonFromText final : public engine::FunctionBase {
 public:
  static const engine::Parameters& parameters() {
    static const engine::Parameters list = {engine::handle<&FunctionJsonFromText::handle_>(L"handle"),
                                            engine::text<&FunctionJsonFromText::text_>(L"text")};
    return list;
  }
  void execute() override {
    picojson::value value;
    helpers::parseDocument(platform::toUtf8(text_), value);
    if (picojson::get_last_error().empty())
      handles().store(handle_, std::make_unique<helpers::JsonDocument>(std::move(value)),
                      helpers::JsonDocument::kind);
  }

 private:
  std::wstring handle_, text_;
};

struct Call {
  const char* tag;
  std::initializer_list<const char*> attributes;
};

const Call kCalls[] = {
    {"jsonGetTypeFromObject", {"handle", "xpath", "var"}},
    {"jsonGetTypeFromArray", {"handle", "index", "var"}},
    {"jsonGetScalarFromObject", {"handle", "xpath", "var"}},
    {"jsonGetArrayFromObject", {"objectHandle", "xpath", "arrayHandle"}},
    {"jsonGetScalarFromArray", {"handle", "index", "var"}},
    {"jsonGetNonScalarFromArray", {"arrayHandle", "index", "nonScalarHandle"}},
    {"jsonGetArrayLength", {"handle", "var"}},
    {"jsonInsertScalarIntoObject", {"handle", "xpath", "name", "stringValue"}},
    {"jsonInsertScalarIntoObject", {"handle", "xpath", "name", "numberValue"}},
    {"jsonInsertScalarIntoArray", {"handle", "index", "boolValue"}},
    {"jsonInsertScalarIntoArray", {"handle", "index", "numberValue"}},
    {"jsonInsertEmptyNonScalarIntoObject", {"handle", "xpath", "name", "type"}},
    {"jsonInsertEmptyNonScalarIntoArray", {"handle", "index", "type"}},
    {"jsonRemoveFieldFromObject", {"handle", "xpath", "name"}},
    {"jsonRemoveFieldFromArray", {"handle", "index"}},
    {"jsonClose", {"handle"}},
};

engine::FunctionRegistry makeRegistry() {
  engine::FunctionRegistry r;
  api::json::registerFunctions(r);
  r.add(engine::tag<FunctionJsonFromText>(L"jsonFromText"));
  return r;
}

// The script element for one input line.
TiXmlElement callElement(std::string_view line) {
  const Call& call = kCalls[static_cast<unsigned char>(line.front()) % std::size(kCalls)];
  TiXmlElement element(call.tag);
  line.remove_prefix(1);
  for (const char* attribute : call.attributes) {
    if (line.data() == nullptr) break;
    const size_t tab = line.find('\t');
    element.SetAttribute(attribute, std::string(line.substr(0, tab)));
    line = tab == std::string_view::npos ? std::string_view() : line.substr(tab + 1);
  }
  return element;
}

}  // namespace

// The target needs no files: on the platform's native stand-in jsonOpen finds
// nothing to read and jsonSave's write fails.

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Every function logs: keep the log off the fuzzer's own output.
  return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxInput) return 0;
  static const engine::FunctionRegistry registry = makeRegistry();
  std::string_view input(reinterpret_cast<const char*>(data), size);
  const size_t firstEnd = std::min(input.find('\n'), input.size());

  TiXmlDocument document;
  TiXmlElement root("script");
  root.SetAttribute("version", "1.1");
  TiXmlElement open("jsonFromText");
  open.SetAttribute("handle", "d");
  open.SetAttribute("text", std::string(input.substr(0, firstEnd)));
  root.InsertEndChild(open);
  for (size_t at = firstEnd + 1; at < input.size();) {
    const size_t end = std::min(input.find('\n', at), input.size());
    if (end > at) root.InsertEndChild(callElement(input.substr(at, end - at)));
    at = end + 1;
  }
  document.InsertEndChild(root);

  engine::Engine engine(registry);
  if (engine.prepare(document, {})) {
    engine::FunctionBase* current = engine.first();
    for (int step = 0; current && step < kMaxSteps; ++step) current = engine.step(current);
  }
  engine.reset();
  return 0;
}
