#include "node_model.h"

#include <algorithm>
#include <vector>

namespace xpath::detail {

Node fromTiXml(const TiXmlNode& n) {
  if (isText(&n)) return Node{textRunStart(&n), nullptr};
  return Node{&n, nullptr};
}

const TiXmlNode* rootOf(const TiXmlNode* n) {
  while (n->Parent()) n = n->Parent();
  return n;
}

namespace {

void appendTextRun(const TiXmlNode* t, std::string& out) {
  for (; t && joinsTextRun(t); t = t->NextSibling())
    if (t->Type() == TiXmlNode::TINYXML_TEXT) out += t->ValueStr();
}

// All text below `n`, in document order, without recursion.
void appendDescendantText(const TiXmlNode* top, std::string& out) {
  const TiXmlNode* n = top->FirstChild();
  while (n) {
    if (n->Type() == TiXmlNode::TINYXML_TEXT) out += n->ValueStr();
    if (hasChildren(n) && n->FirstChild()) {
      n = n->FirstChild();
      continue;
    }
    while (n != top && !n->NextSibling()) n = n->Parent();
    if (n == top) break;
    n = n->NextSibling();
  }
}

}  // namespace

void appendStringValue(const Node& n, std::string& out) {
  if (n.attribute) {
    out += n.attribute->ValueStr();
    return;
  }
  switch (n.node->Type()) {
    case TiXmlNode::TINYXML_TEXT: appendTextRun(n.node, out); return;
    case TiXmlNode::TINYXML_COMMENT: out += n.node->ValueStr(); return;
    case TiXmlNode::TINYXML_ELEMENT:
    case TiXmlNode::TINYXML_DOCUMENT: appendDescendantText(n.node, out); return;
    default: return;
  }
}

std::string_view stringValue(const Node& n, std::string& scratch) {
  if (n.attribute) return n.attribute->ValueStr();
  int type = n.node->Type();
  if (type == TiXmlNode::TINYXML_COMMENT) return n.node->ValueStr();
  if (type == TiXmlNode::TINYXML_TEXT) {
    const TiXmlNode* next = n.node->NextSibling();
    if (!next || !joinsTextRun(next)) return n.node->ValueStr();
  } else if (type == TiXmlNode::TINYXML_ELEMENT) {
    // The common <name>value</name>: one text child, no copy needed.
    const TiXmlNode* c = n.node->FirstChild();
    if (!c) return {};
    if (c == n.node->LastChild() && c->Type() == TiXmlNode::TINYXML_TEXT) return c->ValueStr();
  }
  scratch.clear();
  appendStringValue(n, scratch);
  return scratch;
}

std::string_view nameOf(const Node& n) {
  if (n.attribute) return n.attribute->NameTStr();
  if (n.node->Type() == TiXmlNode::TINYXML_ELEMENT) return n.node->ValueStr();
  return {};
}

bool isAncestor(const TiXmlNode* a, const Node& b) {
  for (const TiXmlNode* p = parentOf(b); p; p = p->Parent())
    if (p == a) return true;
  return false;
}

namespace {

// Ancestors of `n` from the root down to `n` itself (its element for an attribute).
void chainOf(const Node& n, std::vector<const TiXmlNode*>& out) {
  out.clear();
  for (const TiXmlNode* p = n.node; p; p = p->Parent()) out.push_back(p);
  std::reverse(out.begin(), out.end());
}

// Which of two different siblings comes first.
int siblingOrder(const TiXmlNode* a, const TiXmlNode* b) {
  for (const TiXmlNode* s = a->NextSibling(); s; s = s->NextSibling())
    if (s == b) return -1;
  return 1;
}

int attributeOrder(const TiXmlAttribute* a, const TiXmlAttribute* b) {
  for (const TiXmlAttribute* s = a->Next(); s; s = s->Next())
    if (s == b) return -1;
  return 1;
}

}  // namespace

int compareOrder(const Node& a, const Node& b) {
  if (a == b) return 0;
  if (a.node == b.node)  // the element itself, then its attributes in order
    return !a.attribute ? -1 : !b.attribute ? 1 : attributeOrder(a.attribute, b.attribute);
  std::vector<const TiXmlNode*> ca, cb;
  chainOf(a, ca);
  chainOf(b, cb);
  std::size_t i = 0;
  while (i < ca.size() && i < cb.size() && ca[i] == cb[i]) ++i;
  // One holds the other: the ancestor (and its attributes) comes first.
  if (i == ca.size()) return -1;
  if (i == cb.size()) return 1;
  if (i == 0) return ca[0] < cb[0] ? -1 : 1;  // different trees: any fixed order
  return siblingOrder(ca[i], cb[i]);
}

std::uint32_t DocumentOrder::of(const Node& n) {
  const TiXmlNode* owner = n.node;
  if (!root_ || !index_.count(owner)) build(rootOf(owner));
  auto it = index_.find(n.attribute ? static_cast<const void*>(n.attribute) : owner);
  return it == index_.end() ? 0 : it->second;
}

void DocumentOrder::build(const TiXmlNode* root) {
  index_.clear();
  root_ = root;
  std::uint32_t next = 0;
  // Every TiXmlNode gets a number (the members of a text run share the order of
  // their first), and attributes follow their element.
  const TiXmlNode* n = root;
  while (n) {
    index_.emplace(n, next++);
    if (const TiXmlElement* e = n->ToElement())
      for (const TiXmlAttribute* a = e->FirstAttribute(); a; a = a->Next()) index_.emplace(a, next++);
    if (n->FirstChild()) {
      n = n->FirstChild();
      continue;
    }
    while (n && n != root && !n->NextSibling()) n = n->Parent();
    if (!n || n == root) break;
    n = n->NextSibling();
  }
}

}  // namespace xpath::detail
