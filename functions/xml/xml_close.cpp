#include "engine/log.h"
#include "functions/xml/functions.h"

namespace api::xml {

namespace {

constexpr engine::LogLine kStart{L"xmlClose for handle: %s"};

}  // namespace

const Parameters& FunctionXmlClose::parameters() {
  static const Parameters list = {engine::handle<&FunctionXmlClose::handle_>(L"handle")};
  return list;
}

// Any entry of that name goes: a document is destroyed, an element handle
// frees nothing, an unknown name is no error.
void FunctionXmlClose::execute() {
  engine::log(kStart, handle_.c_str());
  handles().close(handle_);
}

const engine::TagDoc FunctionXmlClose::doc{
    L"Releases what the handle name `handle` holds and frees the name: a document is destroyed, and element handles into it are refused from then on; closing an element handle frees nothing else. An unknown name is no error, and a handle of any other kind is closed too.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<xmlOpen path=\"%enginedir%app.config\" handle=\"cfg\"/>\n<xmlGetValue handle=\"cfg\" xpath=\"appSettings/add[@key='Mode']/@value\" var=\"mode\"/>\n<xmlClose handle=\"cfg\"/>"};

}  // namespace api::xml
