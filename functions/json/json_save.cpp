#include "engine/log_lines.h"
#include <exception>

#include "functions/json/functions.h"
#include "platform/output_file.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonSave for handle %s to file %s"};
constexpr engine::LogLine kHandleDoesNotRefer{L"jsonSave handle %s does not refer to a JSON field."};
constexpr engine::LogLine kFailedSerializingJSON{L"jsonSave failed serializing JSON: %hs"};
constexpr engine::LogLine kCouldNotOpenOr{L"jsonSave could not open or create file %s"};

}  // namespace

const Parameters& FunctionJsonSave::parameters() {
  static const Parameters list = {engine::text<&FunctionJsonSave::path_>(L"path"),
      engine::handle<&FunctionJsonSave::handle_>(L"handle")};
  return list;
}

void FunctionJsonSave::execute() {
  const std::wstring path = expand(path_);
  engine::log(kStart, handle_.c_str(), path.c_str());
  const std::optional<helpers::JsonLocation> found = helpers::findJson(handles(), handle_);
  if (!found) {
    engine::log(kHandleDoesNotRefer, handle_.c_str());
    return end(false);
  }
  std::string text;
  try {
    text = found->value->serialize();
  } catch (const std::exception& e) {  // out of memory
    engine::log(kFailedSerializingJSON, e.what());
    return end(false);
  }
  // The file is replaced only once the whole text is on the disk.
  if (platform::replaceFile(path, text) != 0) {
    engine::log(kCouldNotOpenOr, path.c_str());
    return end(false);
  }
  // The serializer never sets the last error: this reports a parse failure of
  // an earlier jsonOpen, and the file has been written all the same.
  const std::string& error = picojson::get_last_error();
  if (!error.empty()) {
    engine::log(kFailedSerializingJSON, error.c_str());
    return end(false);
  }
  end(true);
}

const engine::TagDoc FunctionJsonSave::doc{
    L"Writes the value under `handle` (a document, or a node's sub-tree) to the file `path`, expanded when it runs: compact, objects in key order, integral numbers below 2^53 as integers and others with 17 significant digits, UTF-8 without a byte-order mark. The file is replaced only once the whole text is on the disk; on failure it stays as it was. After a `jsonOpen` that failed to parse, `jsonSave` writes its file but answers False, until a `jsonOpen` parses a file again.",
    {kStart, kHandleDoesNotRefer, kFailedSerializingJSON, kCouldNotOpenOr, engine::kSubjectEnd.as(L"jsonSave")},
    L"True: the file holds the value. False: `handle` names no JSON document or node (or a node whose value is gone), the file cannot be written (a missing directory, access denied, a file in use), or an earlier `jsonOpen` failed to parse (the file is written all the same).",
    L"<jsonOpen path=\"C:\\Program Files\\App\\app.json\" handle=\"cfg\"/>\n<jsonInsertScalarIntoObject handle=\"cfg\" xpath=\"\" name=\"channel\" stringValue=\"stable\"/>\n<jsonSave path=\"C:\\Program Files\\App\\app.json\" handle=\"cfg\">\n  <onFalse><trace value=\"app.json not saved\"/></onFalse>\n</jsonSave>"};

}  // namespace api::json
