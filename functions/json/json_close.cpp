#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonClose for handle %s"};

}  // namespace

const Parameters& FunctionJsonClose::parameters() {
  static const Parameters list = {engine::handle<&FunctionJsonClose::handle_>(L"handle")};
  return list;
}

// Releases whatever the name holds; an unknown name is no error.
void FunctionJsonClose::execute() {
  engine::log(kStart, handle_.c_str());
  handles().close(handle_);
}

const engine::TagDoc FunctionJsonClose::doc{
    L"Releases what the handle name `handle` holds (a document, a node, or a handle of any other kind) and frees the name; an unknown name is no error. Nodes into a closed document stay, but refer to nothing.",
    {kStart},
    L"No result: a plain function writes no end line and takes no handlers.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonGetScalarFromObject handle=\"cfg\" xpath=\"version\" var=\"version\"/>\n<jsonClose handle=\"cfg\"/>"};

}  // namespace api::json
