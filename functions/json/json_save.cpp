#include <exception>

#include "functions/json/functions.h"
#include "platform/output_file.h"

namespace api::json {

const Parameters& FunctionJsonSave::parameters() {
  static const Parameters list = {engine::text<&FunctionJsonSave::path_>(L"path"),
      engine::handle<&FunctionJsonSave::handle_>(L"handle")};
  return list;
}

void FunctionJsonSave::execute() {
  const std::wstring path = expand(path_);
  engine::log(L"jsonSave for handle %s to file %s", handle_.c_str(), path.c_str());
  const std::optional<helpers::JsonLocation> found = helpers::findJson(handles(), handle_);
  if (!found) {
    engine::log(L"jsonSave handle %s does not refer to a JSON field.", handle_.c_str());
    return end(false);
  }
  std::string text;
  try {
    text = found->value->serialize();
  } catch (const std::exception& e) {  // out of memory
    engine::log(L"jsonSave failed serializing JSON: %hs", e.what());
    return end(false);
  }
  // The file is replaced only once the whole text is on the disk.
  if (platform::replaceFile(path, text) != 0) {
    engine::log(L"jsonSave could not open or create file %s", path.c_str());
    return end(false);
  }
  // The serializer never sets the last error: this reports a parse failure of
  // an earlier jsonOpen, and the file has been written all the same.
  const std::string& error = picojson::get_last_error();
  if (!error.empty()) {
    engine::log(L"jsonSave failed serializing JSON: %hs", error.c_str());
    return end(false);
  }
  end(true);
}

}  // namespace api::json
