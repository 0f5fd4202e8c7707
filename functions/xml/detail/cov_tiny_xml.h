#pragma once
// An XML document opened by a script, and the element handles that point into it.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include <tinyxml.h>

#include "engine/handles.h"

namespace api::xml {

class XmlElementHandle;

// The element handles that point into one document. A handle is cut loose
// (its element becomes null) when its element is destroyed or the document
// closes, so a stale handle is refused instead of followed.
class HeldElements {
 public:
  HeldElements() = default;
  HeldElements(const HeldElements&) = delete;
  HeldElements& operator=(const HeldElements&) = delete;
  ~HeldElements();

  void attach(XmlElementHandle& handle);
  void detach(XmlElementHandle& handle);
  // Cuts loose the handles to `top` and everything below it, before it is destroyed.
  void dropSubtree(const TiXmlNode& top);

 private:
  std::unordered_multimap<const TiXmlNode*, XmlElementHandle*> handles_;
};

// Payload of an XML element handle: owns nothing.
class XmlElementHandle final : public engine::HandleObject {
 public:
  static constexpr engine::HandleKind kind = engine::HandleKind::XmlElement;

  XmlElementHandle(TiXmlElement& element, HeldElements& held);
  ~XmlElementHandle() override;
  XmlElementHandle(const XmlElementHandle&) = delete;
  XmlElementHandle& operator=(const XmlElementHandle&) = delete;

  // Null once the element or its document is gone.
  TiXmlElement* element() const { return element_; }
  HeldElements* held() const { return held_; }

 private:
  friend class HeldElements;
  TiXmlElement* element_;
  HeldElements* held_;
};

// Payload of an XML document handle: owns the DOM.
class COVTinyXml : public engine::HandleObject {
 public:
  static constexpr engine::HandleKind kind = engine::HandleKind::XmlDocument;

  // nullptr stands for the file name remembered from the last load. On false,
  // platform::lastErrorOr() says why (no error when the file was read but is not XML).
  virtual bool load(const wchar_t* path);
  // Replaces the file whole, or leaves it as it was; on false, saveError()
  // holds the Windows error code of the failed step.
  virtual bool save(const wchar_t* path);
  uint32_t saveError() const { return saveError_; }

  TiXmlDocument& document() { return document_; }
  HeldElements& held() { return held_; }

  // First node of the expression's node-set from `context`; the context itself
  // for a null expression; nullptr when nothing (or an attribute) is found.
  static TiXmlNode* findNode(TiXmlNode& context, const std::string* xpath);
  // Replaces a node's content with text, or sets an attribute ("path/@name"
  // creates it). False when there is nothing to set.
  static bool setValue(TiXmlNode& context, const std::string& xpath, const std::string& value, HeldElements& held);
  // The expression's result as XPath's string(); nullopt when it fails.
  static std::optional<std::string> evaluateToString(const TiXmlNode& context, const std::string& xpath);
  // A copy of the root element of an XML text; nullptr when it does not parse.
  static std::unique_ptr<TiXmlElement> parseFragment(const std::string& text);
  // Whether `child` can go below `parent` without nesting elements deeper than
  // a parsed document may (TIXML_MAX_DEPTH), which bounds every walk over it.
  static bool fitsBelow(const TiXmlElement& parent, const TiXmlElement& child);

 private:
  TiXmlDocument document_;
  std::wstring fileName_;
  bool byteOrderMark_ = false;
  uint32_t saveError_ = 0;
  // Declared after the document so it is destroyed first, while handles still
  // point at live elements.
  HeldElements held_;
};

}  // namespace api::xml
