#include <exception>

#include "engine/log.h"
#include "functions/json/functions.h"
#include "functions/json/detail/json_file.h"
#include "platform/read_file.h"

namespace api::json {

const Parameters& FunctionJsonOpen::parameters() {
  static const Parameters list = {engine::text<&FunctionJsonOpen::path_>(L"path"),
      engine::newHandle<&FunctionJsonOpen::handle_>(L"handle")};
  return list;
}

// A failed open or parse stores nothing: an earlier handle of that name stays.
void FunctionJsonOpen::execute() {
  const std::wstring path = expand(path_);
  engine::log(L"jsonOpen %s with handle %s", path.c_str(), handle_.c_str());
  bool opened = false;
  std::string text;
  if (!platform::readTextFile(path, text)) {
    engine::log(L"jsonOpen failed opening the file");
  } else {
    try {
      picojson::value value;
      helpers::parseDocument(text, value);
      text = std::string();  // the tree can be many times the text; free the text first
      const std::string& error = picojson::get_last_error();
      if (!error.empty()) {
        engine::log(L"jsonOpen failed parsing JSON: %hs", error.c_str());
      } else {
        handles().store(handle_, std::make_unique<helpers::JsonDocument>(std::move(value)),
                        helpers::JsonDocument::kind);
        opened = true;
      }
    } catch (const std::exception& e) {  // out of memory on a huge document
      engine::log(L"jsonOpen failed parsing JSON: %hs", e.what());
    }
  }
  finishAs(L"jsonOpen", opened);
}

}  // namespace api::json
