// The XPath data model read off a TinyXML tree.
//
// Visible nodes are the document, elements, comments and text. A run of adjacent
// TiXmlText siblings (text and CDATA) is one text node, represented by its first
// non-empty TiXmlText. Declarations, TiXmlUnknown (processing instructions, DTDs)
// and empty text or CDATA are no nodes at all: navigation steps over them, so
// text on either side of one joins into a single run.
#pragma once

#include "xpath.h"

#include <tinyxml.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>

namespace xpath::detail {

enum class NodeKind { Root, Element, Text, Comment, Attribute, None };

// Equality of short texts such as names, compared in line a word at a time:
// a memcmp call, or a loop over the bytes, per node is a good part of the
// time of a whole-document scan. Longer texts compare 8 bytes at a time, and
// the last word of each text overlaps the one before.
inline bool sameText(std::string_view a, std::string_view b) {
  const std::size_t n = a.size();
  if (n != b.size()) return false;
  auto same = [&](std::size_t at, auto word) {
    std::memcpy(&word, a.data() + at, sizeof word);
    decltype(word) other;
    std::memcpy(&other, b.data() + at, sizeof other);
    return word == other;
  };
  if (n >= 8) {
    for (std::size_t at = 0; at + 8 < n; at += 8)
      if (!same(at, std::uint64_t{})) return false;
    return same(n - 8, std::uint64_t{});
  }
  if (n >= 4) return same(0, std::uint32_t{}) && same(n - 4, std::uint32_t{});
  for (std::size_t i = 0; i < n; ++i)
    if (a[i] != b[i]) return false;
  return true;
}

inline bool isText(const TiXmlNode* n) { return n->Type() == TiXmlNode::TINYXML_TEXT && !n->ValueStr().empty(); }

inline bool isVisible(const TiXmlNode* n) {
  switch (n->Type()) {
    case TiXmlNode::TINYXML_DOCUMENT:
    case TiXmlNode::TINYXML_ELEMENT:
    case TiXmlNode::TINYXML_COMMENT: return true;
    case TiXmlNode::TINYXML_TEXT: return !n->ValueStr().empty();
    default: return false;
  }
}

// Part of a text run: any text, or a node that is no node and so does not break it.
inline bool joinsTextRun(const TiXmlNode* n) { return n->Type() == TiXmlNode::TINYXML_TEXT || !isVisible(n); }

inline NodeKind kindOf(const Node& n) {
  if (n.attribute) return NodeKind::Attribute;
  switch (n.node->Type()) {
    case TiXmlNode::TINYXML_DOCUMENT: return NodeKind::Root;
    case TiXmlNode::TINYXML_ELEMENT: return NodeKind::Element;
    case TiXmlNode::TINYXML_COMMENT: return NodeKind::Comment;
    case TiXmlNode::TINYXML_TEXT: return NodeKind::Text;
    default: return NodeKind::None;
  }
}

inline bool hasChildren(const TiXmlNode* n) {
  int t = n->Type();
  return t == TiXmlNode::TINYXML_ELEMENT || t == TiXmlNode::TINYXML_DOCUMENT;
}

inline const TiXmlNode* skipInvisibleForward(const TiXmlNode* n) {
  while (n && !isVisible(n)) n = n->NextSibling();
  return n;
}

// The first non-empty text of the run that the non-empty text `t` belongs to.
inline const TiXmlNode* textRunStart(const TiXmlNode* t) {
  const TiXmlNode* start = t;
  for (const TiXmlNode* p = t->PreviousSibling(); p && joinsTextRun(p); p = p->PreviousSibling())
    if (isText(p)) start = p;
  return start;
}

inline const TiXmlNode* firstChild(const TiXmlNode* n) {
  return hasChildren(n) ? skipInvisibleForward(n->FirstChild()) : nullptr;
}

inline const TiXmlNode* previousVisible(const TiXmlNode* n) {
  while (n && !isVisible(n)) n = n->PreviousSibling();
  if (n && n->Type() == TiXmlNode::TINYXML_TEXT) return textRunStart(n);
  return n;
}

inline const TiXmlNode* lastChild(const TiXmlNode* n) {
  return hasChildren(n) ? previousVisible(n->LastChild()) : nullptr;
}

// Next visible sibling of a visible node (a text node skips the rest of its run).
inline const TiXmlNode* nextSibling(const TiXmlNode* n) {
  const TiXmlNode* s = n->NextSibling();
  if (n->Type() == TiXmlNode::TINYXML_TEXT)
    while (s && joinsTextRun(s)) s = s->NextSibling();
  return skipInvisibleForward(s);
}

inline const TiXmlNode* previousSibling(const TiXmlNode* n) { return previousVisible(n->PreviousSibling()); }

inline const TiXmlNode* parentOf(const Node& n) { return n.attribute ? n.node : n.node->Parent(); }

// The node a caller's TiXmlNode stands for (a text node becomes its run's start).
Node fromTiXml(const TiXmlNode& n);

// Root of the tree holding `n`: its TiXmlDocument, or the top of a detached tree.
const TiXmlNode* rootOf(const TiXmlNode* n);

// Appends the string-value of `n` to `out`.
void appendStringValue(const Node& n, std::string& out);

// The string-value of `n`, viewing the tree's own text where it is one piece.
std::string_view stringValue(const Node& n, std::string& scratch);

// The element or attribute name, "" for other nodes.
std::string_view nameOf(const Node& n);

// Is `a` a proper ancestor of `b`?
bool isAncestor(const TiXmlNode* a, const Node& b);

// Document order of two nodes of one tree by walking it: -1, 0 or 1. Costs the
// depth plus the distance between siblings, so it suits a few comparisons.
int compareOrder(const Node& a, const Node& b);

// Document-order positions of every node in one tree, built on first use.
class DocumentOrder {
 public:
  std::uint32_t of(const Node& n);

 private:
  void build(const TiXmlNode* root);
  std::unordered_map<const void*, std::uint32_t> index_;
  const TiXmlNode* root_ = nullptr;
};

}  // namespace xpath::detail
