#include <exception>

#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/json/functions.h"
#include "functions/json/detail/json_file.h"
#include "platform/read_file.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonOpen %s with handle %s"};
constexpr engine::LogLine kFailedOpeningTheFile{L"jsonOpen failed opening the file"};
constexpr engine::LogLine kFailedParsingJSON{L"jsonOpen failed parsing JSON: %hs"};

}  // namespace

const Parameters& FunctionJsonOpen::parameters() {
  static const Parameters list = {engine::text<&FunctionJsonOpen::path_>(L"path"),
      engine::newHandle<&FunctionJsonOpen::handle_>(L"handle")};
  return list;
}

// A failed open or parse stores nothing: an earlier handle of that name stays.
void FunctionJsonOpen::execute() {
  const std::wstring path = expand(path_);
  engine::log(kStart, path.c_str(), handle_.c_str());
  bool opened = false;
  std::string text;
  if (!platform::readTextFile(path, text)) {
    engine::log(kFailedOpeningTheFile);
  } else {
    try {
      picojson::value value;
      helpers::parseDocument(text, value);
      text = std::string();  // the tree can be many times the text; free the text first
      const std::string& error = picojson::get_last_error();
      if (!error.empty()) {
        engine::log(kFailedParsingJSON, error.c_str());
      } else {
        handles().store(handle_, std::make_unique<helpers::JsonDocument>(std::move(value)),
                        helpers::JsonDocument::kind);
        opened = true;
      }
    } catch (const std::exception& e) {  // out of memory on a huge document
      engine::log(kFailedParsingJSON, e.what());
    }
  }
  finishAs(L"jsonOpen", opened);
}

const engine::TagDoc FunctionJsonOpen::doc{
    L"Reads the file `path`, expanded when it runs, and parses it into a JSON document under the handle name `handle` (taken as written), replacing what the name held. The file holds exactly one JSON value, optionally after a UTF-8 byte-order mark and with white space around it; nesting deeper than 100 levels is refused, and so is a number JSON does not allow (`012`, `1.`, `-.5`, `2.e3`). A failed open or parse stores nothing: an earlier handle of that name stays.",
    {kStart, kFailedOpeningTheFile, kFailedParsingJSON, engine::kSubjectEnd.as(L"jsonOpen")},
    L"True: the document is under `handle`. False: the file cannot be read, or its text is not one JSON value (the parser's message is logged, e.g. `syntax error at line 1 near: trailing`).",
    L"<jsonOpen path=\"C:\\Program Files\\App\\app.json\" handle=\"cfg\">\n  <onFalse><trace value=\"app.json is missing or broken\"/><exit code=\"1\"/></onFalse>\n</jsonOpen>"};

}  // namespace api::json
