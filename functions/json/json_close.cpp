#include "functions/json/functions.h"

namespace api::json {

namespace {

constexpr engine::LogLine kStart{L"jsonClose for handle %s"};

const engine::TagDoc doc{
    L"Releases what the handle name `handle` holds (a document, a node, or a handle of any other kind) and frees the name; an unknown name is no error. Nodes into a closed document stay, but refer to nothing.",
    {kStart},
    L"No result: a plain function writes no end line and takes no handlers.",
    L"<jsonOpen path=\"%enginedir%app.json\" handle=\"cfg\"/>\n<jsonGetScalarFromObject handle=\"cfg\" xpath=\"version\" var=\"version\"/>\n<jsonClose handle=\"cfg\"/>"};

}  // namespace

const FunctionCloseHandle::Variant kJsonClose{kStart, Need::Present, doc};

}  // namespace api::json
