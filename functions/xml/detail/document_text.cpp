// TinyXML prints a document only into a C runtime stream (its string printer
// lays text out differently), and a save must go through platform/'s checked
// writes, so the file printer's layout is followed here node by node. Where
// that layout would change a value read back, the value wins: see the header.
// A unit test compares both on documents where they agree.
#include "functions/xml/detail/document_text.h"

#include <tinyxml.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace api::xml {
namespace {

// Deeper levels are indented as much as this one, so the text of a deeply
// nested document stays within a small multiple of the document's own size.
constexpr int kMaxIndentDepth = 10;

void indent(std::string& out, int depth) { out.append(4 * static_cast<size_t>(std::min(depth, kMaxIndentDepth)), ' '); }

// The general entities the document type declaration's internal subset
// declares (`<!ENTITY name ...>`). TinyXML does not expand them and keeps a
// reference to one as its text, so it is written back as a reference.
std::vector<std::string> declaredEntities(const TiXmlDocument& document) {
  std::vector<std::string> names;
  for (const TiXmlNode* node = document.FirstChild(); node; node = node->NextSibling()) {
    const std::string_view text = node->ToUnknown() ? node->ValueStr() : std::string_view();
    if (text.substr(0, 8) != "!DOCTYPE") continue;
    constexpr std::string_view kDeclaration = "<!ENTITY";
    for (size_t at = text.find(kDeclaration); at != std::string_view::npos; at = text.find(kDeclaration, at + 1)) {
      const size_t name = text.find_first_not_of(" \t\r\n", at + kDeclaration.size());
      if (name == at + kDeclaration.size() || name == std::string_view::npos || text[name] == '%') continue;
      names.emplace_back(text.substr(name, text.find_first_of(" \t\r\n", name) - name));
    }
  }
  return names;
}

// An element whose children mix text with other nodes: white space added
// between them would become part of the text. (Around a CDATA section it
// would not: white space alone between nodes is dropped when read.)
bool mixesText(const TiXmlElement& element) {
  if (element.FirstChild() == element.LastChild()) return false;
  for (const TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling())
    if (child->ToText() && !child->ToText()->CDATA()) return true;
  return false;
}

bool needsEscape(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == '&' || c == '<' || c == '>' || c == '"' || c == '\'';
}

class Printer {
 public:
  Printer(std::string& out, std::vector<std::string> entities) : out_(out), entities_(std::move(entities)) {}

  // `inlined`: inside mixed content, where nothing may be added around nodes.
  void node(const TiXmlNode& node, int depth, bool inlined) {
    if (const TiXmlElement* element = node.ToElement()) {
      printElement(*element, depth, inlined);
    } else if (const TiXmlText* text = node.ToText()) {
      if (!text->CDATA()) return escape(text->ValueStr(), true);
      if (!inlined) {
        out_ += '\n';
        indent(out_, depth);
      }
      out_ += "<![CDATA[";
      out_ += text->ValueStr();
      out_ += "]]>";
      if (!inlined) out_ += '\n';
    } else if (const TiXmlDeclaration* declaration = node.ToDeclaration()) {
      declaration->Print(nullptr, depth, &out_);
    } else if (node.ToComment() || node.ToUnknown()) {
      if (!inlined) indent(out_, depth);
      out_ += node.ToComment() ? "<!--" : "<";
      out_ += node.ValueStr();
      out_ += node.ToComment() ? "-->" : ">";
    }
  }

 private:
  // Without children `<a />`; with one text child inline; mixed content as
  // it is; else one child per line.
  void printElement(const TiXmlElement& element, int depth, bool inlined) {
    if (!inlined) indent(out_, depth);
    out_ += '<';
    out_ += element.ValueStr();
    for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
      const char quote = attribute->ValueStr().find('"') == std::string::npos ? '"' : '\'';
      out_ += ' ';
      out_ += attribute->NameTStr();
      out_ += '=';
      out_ += quote;
      escape(attribute->ValueStr(), false);
      out_ += quote;
    }
    const TiXmlNode* first = element.FirstChild();
    if (!first) {
      out_ += " />";
      return;
    }
    out_ += '>';
    if (inlined || mixesText(element)) {
      for (const TiXmlNode* child = first; child; child = child->NextSibling()) node(*child, depth + 1, true);
    } else if (first == element.LastChild() && first->ToText()) {
      node(*first, depth + 1, false);
    } else {
      for (const TiXmlNode* child = first; child; child = child->NextSibling()) {
        if (!child->ToText()) out_ += '\n';  // a CDATA section starts its own line
        node(*child, depth + 1, false);
      }
      out_ += '\n';
      indent(out_, depth);
    }
    out_ += "</";
    out_ += element.ValueStr();
    out_ += '>';
  }

  // TinyXML's escaping, except that in text a line break or tab is written as
  // itself (not `&#x0A;`), and a declared entity's reference as a reference.
  void escape(const std::string& value, bool inText) {
    if (std::none_of(value.begin(), value.end(), needsEscape)) {  // most values: nothing to do
      out_ += value;
      return;
    }
    encoded_.clear();
    TiXmlBase::EncodeString(value, &encoded_);
    const std::string_view text = encoded_;
    for (size_t at = 0; at < text.size();) {
      const std::string_view rest = text.substr(at);
      if (rest[0] != '&') {
        const size_t next = rest.find('&');
        out_.append(rest.substr(0, next));
        at += next == std::string_view::npos ? rest.size() : next;
      } else if (inText && (rest.substr(0, 6) == "&#x0A;" || rest.substr(0, 6) == "&#x09;")) {
        out_ += rest[4] == 'A' ? '\n' : '\t';
        at += 6;
      } else {
        // "&amp;" before a declared name and ';' stands for the reference's own '&'.
        out_ += '&';
        at += startsWithReference(rest) ? 5 : 1;
      }
    }
  }

  // Whether `text` starts with "&amp;", a declared entity's name and ';'.
  bool startsWithReference(std::string_view text) const {
    if (entities_.empty() || text.substr(0, 5) != "&amp;") return false;
    for (const std::string& name : entities_)
      if (text.substr(5, name.size()) == name && text.substr(5 + name.size(), 1) == ";") return true;
    return false;
  }

  std::string& out_;
  const std::vector<std::string> entities_;
  std::string encoded_;
};

}  // namespace

std::string documentText(const TiXmlDocument& document, bool byteOrderMark) {
  std::string text = byteOrderMark ? "\xEF\xBB\xBF" : "";
  Printer printer(text, declaredEntities(document));
  for (const TiXmlNode* node = document.FirstChild(); node; node = node->NextSibling()) {
    printer.node(*node, 0, false);
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
