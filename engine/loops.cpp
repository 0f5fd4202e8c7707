#include "engine/loops.h"

#include <cinttypes>
#include <cstdio>
#include <string>

#include <tinyxml.h>

namespace engine {
namespace {

// Loop labels are unique per expansion: the address of its first element,
// written as 16 upper-case hex digits.
std::string token(const void* first) {
  char text[32];
  std::snprintf(text, sizeof text, "%016" PRIX64, static_cast<uint64_t>(reinterpret_cast<uintptr_t>(first)));
  return text;
}

const char* nonEmptyAttribute(const TiXmlElement& element, const char* name) {
  const char* value = element.Attribute(name);
  return value && *value ? value : nullptr;
}

TiXmlElement* insertBefore(TiXmlElement& loop, const char* tag,
                           std::initializer_list<std::pair<const char*, std::string>> attributes) {
  TiXmlElement element(tag);
  for (const auto& [name, value] : attributes) element.SetAttribute(name, value);
  return loop.Parent()->InsertBeforeChild(&loop, element)->ToElement();
}

// A handler child: <handlerTag><tag name="value"/></handlerTag>.
void addHandler(TiXmlElement& owner, const char* handlerTag, const char* tag, const char* name = nullptr,
                const std::string& value = {}) {
  TiXmlElement inner(tag);
  if (name) inner.SetAttribute(name, value);
  TiXmlElement handler(handlerTag);
  handler.InsertEndChild(inner);
  owner.InsertEndChild(handler);
}

void moveBodyBefore(TiXmlElement& loop) {
  for (TiXmlElement* child = loop.FirstChildElement(); child; child = child->NextSiblingElement())
    loop.Parent()->InsertBeforeChild(&loop, *child);
}

void remove(TiXmlElement& loop) { loop.Parent()->RemoveChild(&loop); }

}  // namespace

TiXmlElement* expandFor(TiXmlElement& loop) {
  const char* var = nonEmptyAttribute(loop, "var");
  const char* value = nonEmptyAttribute(loop, "value");
  const char* delim = nonEmptyAttribute(loop, "delim");
  if (!var || !value || !delim || !loop.Parent()) return nullptr;

  TiXmlElement* first = insertBefore(loop, "assign", {{"value", value}});
  const std::string t = token(first);
  const std::string listVar = "forvar" + t, begin = "forbegin" + t, end = "forend" + t;
  first->SetAttribute("var", listVar);

  insertBefore(loop, "stringGet",
               {{"id", begin},
                {"var", var},
                {"fromIndex", "0"},
                {"maxCount", "10000"},
                {"toAnyChar", delim},
                {"value", "%" + listVar + "%"}});
  insertBefore(loop, "stringDelete",
               {{"var", listVar}, {"fromIndex", "0"}, {"maxCount", "10000"}, {"toAnyChar", delim}});
  insertBefore(loop, "stringTrim", {{"var", listVar}, {"chars", delim}});
  TiXmlElement* test = insertBefore(
      loop, "test", {{"left", std::string("%") + var + "%"}, {"operator", "=="}, {"right", ""}, {"type", "string"}});
  addHandler(*test, "onTrue", "goto", "target", end);
  moveBodyBefore(loop);
  insertBefore(loop, "goto", {{"target", begin}});
  insertBefore(loop, "nothing", {{"id", end}});
  remove(loop);
  return first;
}

TiXmlElement* expandXmlForEach(TiXmlElement& loop) {
  const char* handle = nonEmptyAttribute(loop, "handle");
  const char* step = nonEmptyAttribute(loop, "step");
  const char* dest = nonEmptyAttribute(loop, "destHandle");
  const char* xpath = loop.Attribute("xpath");
  if (!handle || !step || !dest || !loop.Parent()) return nullptr;

  TiXmlElement* first =
      insertBefore(loop, "xmlGetElement", {{"handle", handle}, {"xpath", xpath ? xpath : ""}, {"destHandle", dest}});
  const std::string t = token(first);
  const std::string begin = "forbegin" + t, end = "forend" + t;
  addHandler(*first, "onerror", "goto", "target", end);

  insertBefore(loop, "nothing", {{"id", begin}});
  moveBodyBefore(loop);
  TiXmlElement* next = insertBefore(loop, "xmlGetElement", {{"handle", dest}, {"xpath", step}, {"destHandle", dest}});
  addHandler(*next, "onerror", "nothing");
  addHandler(*next, "onsuccess", "goto", "target", begin);
  insertBefore(loop, "nothing", {{"id", end}});
  remove(loop);
  return first;
}

}  // namespace engine
