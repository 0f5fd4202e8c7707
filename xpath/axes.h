// Walks the thirteen axes from one context node, in axis order (document order
// for forward axes, reverse document order for reverse axes). The callback
// returns false to stop early; `visit` is called once per node touched so the
// caller can bound the work.
#pragma once

#include "ast.h"
#include "node_model.h"

namespace xpath::detail {

// Preorder successor of `n` inside the subtree of `top`, or nullptr.
inline const TiXmlNode* nextInSubtree(const TiXmlNode* n, const TiXmlNode* top) {
  if (const TiXmlNode* c = firstChild(n)) return c;
  for (; n && n != top; n = n->Parent())
    if (const TiXmlNode* s = nextSibling(n)) return s;
  return nullptr;
}

// Preorder successor of `n` once its own subtree is done, anywhere in the tree.
inline const TiXmlNode* nextAfterSubtree(const TiXmlNode* n) {
  for (; n; n = n->Parent())
    if (const TiXmlNode* s = nextSibling(n)) return s;
  return nullptr;
}

inline const TiXmlNode* deepestLast(const TiXmlNode* n) {
  while (const TiXmlNode* c = lastChild(n)) n = c;
  return n;
}

// The elements of the subtree of `top` in document order, `top` itself first
// when `self` is set and it is one: those that pass `test` go to `f` with their
// depth below `top`. This is the descendant(-or-self) axis for a name test.
// Of any other node only the type is read, the last child of a parent is told
// by the parent rather than by an empty next link, and the way back up follows
// the parents the walk came down through; each node read counts as a visit,
// invisible ones included. A first child and a next sibling are met by
// separate code: in a regular document each then reads nodes a steady distance
// apart, which the processor learns to fetch ahead of time.
template <class Visit, class Test, class F>
void walkDescendantElements(const TiXmlNode* top, bool self, Visit&& visit, Test&& test, F&& f) {
  if (self && top->Type() == TiXmlNode::TINYXML_ELEMENT) {
    visit();
    if (test(top) && !f(top, std::size_t{0})) return;
  }
  if (!hasChildren(top) || !top->FirstChild()) return;
  enum class Next { Stop, Across, Down };
  std::size_t depth = 1;
  auto meet = [&](const TiXmlNode* n) {
    visit();
    if (n->Type() != TiXmlNode::TINYXML_ELEMENT) return Next::Across;
    if (test(n) && !f(n, depth)) return Next::Stop;
    return n->FirstChild() ? Next::Down : Next::Across;
  };
  const TiXmlNode* parent = top;
  const TiXmlNode* n = top->FirstChild();
  Next next = meet(n);
  while (next != Next::Stop) {
    if (next == Next::Down) {
      parent = n;
      n = n->FirstChild();
      ++depth;
      next = meet(n);
      continue;
    }
    while (n == parent->LastChild()) {
      if (parent == top) return;
      n = parent;
      parent = parent->Parent();
      --depth;
    }
    n = n->NextSibling();
    next = meet(n);
  }
}

template <class Visit, class F>
void walkAxis(Axis axis, const Node& ctx, Visit&& visit, F&& f) {
  const TiXmlNode* n = ctx.node;
  const bool attr = ctx.attribute != nullptr;
  switch (axis) {
    case Axis::Self:
      visit();
      f(ctx);
      return;
    case Axis::Namespace: return;  // TinyXML keeps no namespace nodes
    case Axis::Attribute: {
      if (attr || n->Type() != TiXmlNode::TINYXML_ELEMENT) return;
      for (const TiXmlAttribute* a = static_cast<const TiXmlElement*>(n)->FirstAttribute(); a; a = a->Next()) {
        visit();
        if (!f(Node{n, a})) return;
      }
      return;
    }
    case Axis::Child:
      if (attr) return;
      for (const TiXmlNode* c = firstChild(n); c; c = nextSibling(c)) {
        visit();
        if (!f(Node{c, nullptr})) return;
      }
      return;
    case Axis::DescendantOrSelf:
      visit();
      if (!f(ctx)) return;
      [[fallthrough]];
    case Axis::Descendant:
      if (attr) return;
      for (const TiXmlNode* d = firstChild(n); d; d = nextInSubtree(d, n)) {
        visit();
        if (!f(Node{d, nullptr})) return;
      }
      return;
    case Axis::Parent:
      if (const TiXmlNode* p = parentOf(ctx)) {
        visit();
        f(Node{p, nullptr});
      }
      return;
    case Axis::AncestorOrSelf:
      visit();
      if (!f(ctx)) return;
      [[fallthrough]];
    case Axis::Ancestor:
      for (const TiXmlNode* p = parentOf(ctx); p; p = p->Parent()) {
        visit();
        if (!f(Node{p, nullptr})) return;
      }
      return;
    case Axis::FollowingSibling:
      if (attr) return;
      for (const TiXmlNode* s = nextSibling(n); s; s = nextSibling(s)) {
        visit();
        if (!f(Node{s, nullptr})) return;
      }
      return;
    case Axis::PrecedingSibling:
      if (attr) return;
      for (const TiXmlNode* s = previousSibling(n); s; s = previousSibling(s)) {
        visit();
        if (!f(Node{s, nullptr})) return;
      }
      return;
    case Axis::Following: {
      // An attribute's following nodes start with its element's children.
      const TiXmlNode* d = attr ? firstChild(n) : nullptr;
      if (!d) d = nextAfterSubtree(n);
      for (; d; d = nextInSubtree(d, nullptr)) {
        visit();
        if (!f(Node{d, nullptr})) return;
      }
      return;
    }
    case Axis::Preceding: {
      // Reverse preorder from the context node, leaving out its ancestors (an
      // attribute's element is one of them).
      const TiXmlNode* x = n;
      const TiXmlNode* ancestor = n->Parent();
      while (true) {
        if (const TiXmlNode* s = previousSibling(x)) {
          x = deepestLast(s);
        } else {
          x = x->Parent();
          if (!x) return;
          if (x == ancestor) {
            ancestor = x->Parent();
            continue;
          }
        }
        visit();
        if (!f(Node{x, nullptr})) return;
      }
    }
  }
}

// A name test: off the attribute axis it passes elements only.
inline bool isNameTest(Test t) { return t == Test::Name || t == Test::AnyName || t == Test::PrefixAny; }

// A step that walkDescendantElements() can take: a name test on the
// descendant(-or-self) axis.
inline bool walksElements(const Step& s) {
  return (s.axis == Axis::Descendant || s.axis == Axis::DescendantOrSelf) && isNameTest(s.test);
}

// Does an element or attribute called `name` pass the name test of `step`?
inline bool nameMatches(const Step& step, std::string_view name) {
  if (step.test == Test::AnyName) return true;
  if (step.test == Test::PrefixAny) return sameText(name.substr(0, step.name.size()), step.name);
  return sameText(name, step.name);
}

// Does `n`, met on `axis`, pass the node test of `step`?
inline bool matches(const Step& step, Axis axis, const Node& n) {
  switch (step.test) {
    case Test::Node: return true;
    case Test::Text: return !n.attribute && n.node->Type() == TiXmlNode::TINYXML_TEXT;
    case Test::Comment: return !n.attribute && n.node->Type() == TiXmlNode::TINYXML_COMMENT;
    case Test::Pi: return false;
    default: break;
  }
  // Name tests select the axis's principal node type: attributes on the
  // attribute axis, elements everywhere else.
  std::string_view name;
  if (axis == Axis::Attribute) {
    if (!n.attribute) return false;
    name = n.attribute->NameTStr();
  } else {
    if (n.attribute || n.node->Type() != TiXmlNode::TINYXML_ELEMENT) return false;
    name = n.node->ValueStr();
  }
  return nameMatches(step, name);
}

}  // namespace xpath::detail
