#include "functions/xml/detail/cov_tiny_xml.h"

#include <algorithm>
#include <memory>

#include "functions/xml/detail/document_text.h"
#include "functions/xml/detail/xml_characters.h"
#include "platform/error_text.h"
#include "platform/output_file.h"
#include "platform/read_file.h"
#include "xpath/xpath.h"

namespace api::xml {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// A file without byte-order mark or XML declaration is UTF-8; otherwise
// TinyXML decides from the mark or the declared encoding, as its LoadFile does.
TiXmlEncoding encodingOf(std::string_view head) {
  if (head.substr(0, 3) == kByteOrderMark) return TIXML_DEFAULT_ENCODING;
  const size_t at = head.find_first_not_of(" \t\r\n");
  if (at != std::string_view::npos && head.substr(at, 5) == "<?xml") return TIXML_DEFAULT_ENCODING;
  return TIXML_ENCODING_UTF8;
}

// Documents keep their text as written: a value's spaces and line breaks are
// data. (White space alone between elements is still dropped.)
void keepWhiteSpace() { TiXmlBase::SetCondenseWhiteSpace(false); }

// `node`'s successor in a pre-order walk that stays below `top`.
const TiXmlNode* nextBelow(const TiXmlNode* node, const TiXmlNode& top) {
  if (node->FirstChild()) return node->FirstChild();
  while (node != &top) {
    if (node->NextSibling()) return node->NextSibling();
    node = node->Parent();
  }
  return nullptr;
}

// Elements from `node` up to the document, `node` included.
int elementDepth(const TiXmlNode& node) {
  int depth = 0;
  for (const TiXmlNode* n = &node; n; n = n->Parent())
    if (n->ToElement()) ++depth;
  return depth;
}

// Levels of elements in `top`'s subtree, `top` included, without recursion.
int elementHeight(const TiXmlElement& top) {
  int depth = 1, height = 1;
  const TiXmlElement* element = &top;
  for (;;) {
    if (const TiXmlElement* child = element->FirstChildElement()) {
      element = child;
      height = std::max(height, ++depth);
      continue;
    }
    while (element != &top && !element->NextSiblingElement()) {
      element = element->Parent()->ToElement();
      --depth;
    }
    if (element == &top) return height;
    element = element->NextSiblingElement();
  }
}

// "path/@name" split at its last slash; false for any other form.
bool splitAttributePath(const std::string& xpath, std::string& elementPath, std::string& name) {
  const size_t slash = xpath.rfind('/');
  if (slash == std::string::npos || slash + 2 >= xpath.size() || xpath[slash + 1] != '@') return false;
  name = xpath.substr(slash + 2);
  // Only a name can be created; "@*" or "@a[1]" are left to the XPath itself.
  if (!isXmlName(name)) return false;
  elementPath = xpath.substr(0, slash);
  return true;
}

}  // namespace

HeldElements::~HeldElements() {
  for (auto& [element, handle] : handles_) {
    handle->element_ = nullptr;
    handle->held_ = nullptr;
  }
}

void HeldElements::attach(XmlElementHandle& handle) { handles_.emplace(handle.element_, &handle); }

void HeldElements::detach(XmlElementHandle& handle) {
  auto [it, end] = handles_.equal_range(handle.element_);
  for (; it != end; ++it)
    if (it->second == &handle) {
      handles_.erase(it);
      return;
    }
}

void HeldElements::dropSubtree(const TiXmlNode& top) {
  if (handles_.empty()) return;
  for (const TiXmlNode* node = &top; node; node = nextBelow(node, top)) {
    auto [it, end] = handles_.equal_range(node);
    for (; it != end; ++it) {
      it->second->element_ = nullptr;
      it->second->held_ = nullptr;
    }
    handles_.erase(node);
  }
}

XmlElementHandle::XmlElementHandle(TiXmlElement& element, HeldElements& held) : element_(&element), held_(&held) {
  held.attach(*this);
}

XmlElementHandle::~XmlElementHandle() {
  if (held_) held_->detach(*this);
}

bool COVTinyXml::load(const wchar_t* path) {
  if (path) fileName_ = path;
  platform::UniqueFile file = platform::openForReading(fileName_);
  if (!file) return false;
  const std::string head = platform::readHead(file.get(), 64);
  // TinyXML keeps a byte-order mark it read and writes it back.
  byteOrderMark_ = head.substr(0, 3) == kByteOrderMark;
  // A read failure leaves its own error; a parse failure leaves none.
  platform::clearLastError();
  held_.dropSubtree(document_);
  keepWhiteSpace();
  // TinyXML's own reader: it normalises line ends before parsing.
  return document_.LoadFile(file.get(), encodingOf(head));
}

bool COVTinyXml::save(const wchar_t* path) {
  saveError_ = platform::replaceFile(path ? path : fileName_, documentText(document_, byteOrderMark_));
  return saveError_ == 0;
}

TiXmlNode* COVTinyXml::findNode(TiXmlNode& context, const std::string* xpath) {
  if (!xpath) return &context;
  return xpath::firstNode(*xpath, context);
}

bool COVTinyXml::setValue(TiXmlNode& context, const std::string& xpath, const std::string& value, HeldElements& held) {
  if (!isXmlText(value)) return false;
  if (TiXmlNode* node = findNode(context, &xpath)) {
    if (TiXmlElement* element = node->ToElement()) {
      for (const TiXmlNode* child = element->FirstChild(); child; child = child->NextSibling())
        held.dropSubtree(*child);
      element->Clear();
      element->LinkEndChild(new TiXmlText(value));
      return true;
    }
    if (node->ToText() || node->ToComment()) {
      node->SetValue(value);
      return true;
    }
  }
  std::string elementPath, name;
  if (splitAttributePath(xpath, elementPath, name)) {
    TiXmlNode* node = findNode(context, &elementPath);
    if (TiXmlElement* element = node ? node->ToElement() : nullptr) {
      element->SetAttribute(name, value);
      return true;
    }
  }
  if (TiXmlAttribute* attribute = xpath::firstAttribute(xpath, context)) {
    attribute->SetValue(value);
    return true;
  }
  return false;
}

std::optional<std::string> COVTinyXml::evaluateToString(const TiXmlNode& context, const std::string& xpath) {
  return xpath::evaluateString(xpath, context);
}

std::unique_ptr<TiXmlElement> COVTinyXml::parseFragment(const std::string& text) {
  keepWhiteSpace();
  TiXmlDocument fragment;
  fragment.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
  if (fragment.Error()) return nullptr;
  // Exactly one element, after an XML declaration if any: nothing else could be added whole.
  const TiXmlNode* node = fragment.FirstChild();
  if (node && node->ToDeclaration()) node = node->NextSibling();
  if (!node || !node->ToElement() || node->NextSibling()) return nullptr;
  return std::unique_ptr<TiXmlElement>(node->Clone()->ToElement());
}

bool COVTinyXml::fitsBelow(const TiXmlElement& parent, const TiXmlElement& child) {
  return elementDepth(parent) + elementHeight(child) <= TIXML_MAX_DEPTH;
}

}  // namespace api::xml
