#pragma once
// A document as the bytes xmlSave writes: TinyXML's file printer's layout
// (4 spaces per level, up to 10 levels; `<a />`; text inline), each line end
// as CR LF, with what that layout would change left as it is: line breaks and
// tabs in text, mixed content (no white space added between text and
// elements), and references to entities the document type declaration declares.
#include <string>

class TiXmlDocument;

namespace api::xml {

// `byteOrderMark`: start with the UTF-8 mark, as TinyXML does for a document read with one.
std::string documentText(const TiXmlDocument& document, bool byteOrderMark);

}  // namespace api::xml
