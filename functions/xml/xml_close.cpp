#include "functions/xml/functions.h"

namespace api::xml {

namespace {

constexpr engine::LogLine kStart{L"xmlClose for handle: %s"};

const engine::TagDoc doc{
    L"Releases what the handle name `handle` holds and frees the name: a document is destroyed, and element handles into it are refused from then on; closing an element handle frees nothing else. An unknown name is no error, and a handle of any other kind is closed too.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<xmlOpen path=\"%enginedir%app.config\" handle=\"cfg\"/>\n<xmlGetValue handle=\"cfg\" xpath=\"appSettings/add[@key='Mode']/@value\" var=\"mode\"/>\n<xmlClose handle=\"cfg\"/>"};

}  // namespace

const FunctionCloseHandle::Variant kXmlClose{kStart, Need::Present, doc};

}  // namespace api::xml
