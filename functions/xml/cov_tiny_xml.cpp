#include "functions/xml/cov_tiny_xml.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <windows.h>

#include "platform/unique_file.h"
#include "xpath/xpath.h"

namespace api::xml {
namespace {

using platform::UniqueFile;

// A file without byte-order mark or XML declaration is UTF-8; otherwise
// TinyXML decides from the mark or the declared encoding, as its LoadFile does.
TiXmlEncoding encodingOf(std::FILE* file) {
  char head[64];
  const size_t length = std::fread(head, 1, sizeof head, file);
  size_t at = 0;
  while (at < length && std::strchr(" \t\r\n", head[at])) ++at;
  if (length >= 3 && std::memcmp(head, "\xEF\xBB\xBF", 3) == 0) return TIXML_DEFAULT_ENCODING;
  if (length - at >= 5 && std::memcmp(head + at, "<?xml", 5) == 0) return TIXML_DEFAULT_ENCODING;
  return TIXML_ENCODING_UTF8;
}

// `node`'s successor in a pre-order walk that stays below `top`.
const TiXmlNode* nextBelow(const TiXmlNode* node, const TiXmlNode& top) {
  if (node->FirstChild()) return node->FirstChild();
  while (node != &top) {
    if (node->NextSibling()) return node->NextSibling();
    node = node->Parent();
  }
  return nullptr;
}

// "path/@name" split at its last slash; false for any other form.
bool splitAttributePath(const std::string& xpath, std::string& elementPath, std::string& name) {
  const size_t slash = xpath.rfind('/');
  if (slash == std::string::npos || slash + 2 >= xpath.size() || xpath[slash + 1] != '@') return false;
  name = xpath.substr(slash + 2);
  // Only a plain name can be created; "@*" or "@a[1]" are left to the XPath itself.
  if (name.empty() || name.find_first_of("[]()/@=\"'<>&|*, \t\r\n") != std::string::npos) return false;
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
  SetLastError(0);
  UniqueFile file(_wfopen(fileName_.c_str(), L"rb"));
  if (!file) return false;
  const TiXmlEncoding encoding = encodingOf(file.get());
  // A read failure leaves its own error; a parse failure leaves none.
  SetLastError(0);
  held_.dropSubtree(document_);
  // TinyXML's own reader: it normalises line ends before parsing.
  return document_.LoadFile(file.get(), encoding);
}

bool COVTinyXml::save(const wchar_t* path) {
  SetLastError(0);
  // Text mode, as TinyXML's SaveFile opens it: line ends are written as CR LF.
  std::FILE* file = _wfopen(path ? path : fileName_.c_str(), L"w");
  if (!file) return false;
  const bool written = document_.SaveFile(file);
  const bool closed = std::fclose(file) == 0;
  return written && closed;
}

TiXmlNode* COVTinyXml::findNode(TiXmlNode& context, const std::string* xpath) {
  if (!xpath) return &context;
  return xpath::firstNode(*xpath, context);
}

bool COVTinyXml::setValue(TiXmlNode& context, const std::string& xpath, const std::string& value, HeldElements& held) {
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
  TiXmlDocument fragment;
  fragment.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
  if (fragment.Error() || !fragment.RootElement()) return nullptr;
  return std::unique_ptr<TiXmlElement>(fragment.RootElement()->Clone()->ToElement());
}

}  // namespace api::xml
