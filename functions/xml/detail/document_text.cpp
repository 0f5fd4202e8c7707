// TinyXML prints a document only into a C runtime stream (its string printer
// lays text out differently), and a save must go through platform/'s checked
// writes, so the file printer's layout is followed here node by node. A unit
// test compares both on a document with every kind of node.
#include "functions/xml/detail/document_text.h"

#include <tinyxml.h>

namespace api::xml {
namespace {

void indent(std::string& out, int depth) { out.append(4 * static_cast<size_t>(depth), ' '); }

void print(const TiXmlNode& node, int depth, std::string& out);

// Without children `<a />`; with one text child inline; else one child per line.
void printElement(const TiXmlElement& element, int depth, std::string& out) {
  indent(out, depth);
  out += '<';
  out += element.Value();
  for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
    out += ' ';
    attribute->Print(nullptr, depth, &out);
  }
  const TiXmlNode* first = element.FirstChild();
  if (!first) {
    out += " />";
    return;
  }
  out += '>';
  if (first == element.LastChild() && first->ToText()) {
    print(*first, depth + 1, out);
  } else {
    for (const TiXmlNode* child = first; child; child = child->NextSibling()) {
      if (!child->ToText()) out += '\n';
      print(*child, depth + 1, out);
    }
    out += '\n';
    indent(out, depth);
  }
  out += "</";
  out += element.Value();
  out += '>';
}

void print(const TiXmlNode& node, int depth, std::string& out) {
  if (const TiXmlElement* element = node.ToElement()) {
    printElement(*element, depth, out);
  } else if (const TiXmlText* text = node.ToText()) {
    if (text->CDATA()) {
      out += '\n';
      indent(out, depth);
      out += "<![CDATA[";
      out += text->Value();
      out += "]]>\n";
    } else {
      TiXmlBase::EncodeString(text->ValueTStr(), &out);
    }
  } else if (const TiXmlDeclaration* declaration = node.ToDeclaration()) {
    declaration->Print(nullptr, depth, &out);
  } else if (node.ToComment() || node.ToUnknown()) {
    indent(out, depth);
    out += node.ToComment() ? "<!--" : "<";
    out += node.Value();
    out += node.ToComment() ? "-->" : ">";
  }
}

}  // namespace

std::string documentText(const TiXmlDocument& document, bool byteOrderMark) {
  std::string text = byteOrderMark ? "\xEF\xBB\xBF" : "";
  for (const TiXmlNode* node = document.FirstChild(); node; node = node->NextSibling()) {
    print(*node, 0, text);
    text += '\n';
  }
  // The file printer writes in text mode: every line feed goes out as CR LF.
  std::string bytes;
  bytes.reserve(text.size() + text.size() / 16);
  for (char c : text) {
    if (c == '\n') bytes += '\r';
    bytes += c;
  }
  return bytes;
}

}  // namespace api::xml
