#pragma once
// What XML allows in names and text, for values a script puts into a document:
// anything else would make the saved file one that no parser opens again.
#include <string_view>

namespace api::xml {

// Whether the UTF-8 text is an XML name (what an attribute's name must be).
bool isXmlName(std::string_view text);

// Whether every character of the UTF-8 text may stand in an XML document: no
// control character but tab and line ends, no U+FFFE or U+FFFF.
bool isXmlText(std::string_view text);

}  // namespace api::xml
