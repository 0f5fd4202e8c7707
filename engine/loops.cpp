#include "engine/loops.h"

#include <cinttypes>
#include <cstdio>
#include <string>
#include <vector>

#include <tinyxml.h>

#include "engine/ascii.h"
#include "platform/text.h"

namespace engine {
namespace {

// Loop labels are unique per expansion: the address of its first element,
// written as 16 upper-case hex digits.
std::string token(const void* first) {
  char text[32];
  std::snprintf(text, sizeof text, "%016" PRIX64, static_cast<uint64_t>(reinterpret_cast<uintptr_t>(first)));
  return text;
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

TiXmlElement* expandFor(TiXmlElement& loop) {
  const char* var = loop.Attribute("var");
  const char* value = loop.Attribute("value");
  const char* delim = loop.Attribute("delim");

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
  const char* handle = loop.Attribute("handle");
  const char* step = loop.Attribute("step");
  const char* dest = loop.Attribute("destHandle");
  const char* xpath = loop.Attribute("xpath");

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

}  // namespace

std::span<const Loop> loops() {
  static const Loop list[] = {
      {L"for",
       L"Runs its body once for every item of `value`, split at any character of `delim`, with the item in the "
       L"variable `var`.",
       {checked(L"var", Form::Variable, Need::NonEmpty), checked(L"value", Form::Text, Need::NonEmpty),
        checked(L"delim", Form::Literal, Need::NonEmpty)},
       L"For function is invalid",
       &expandFor},
      {L"xmlForEach",
       L"Runs its body for the element `xpath` finds under `handle`, then for each element `step` finds from the "
       L"previous one, with the element under `destHandle`.",
       {checked(L"handle", Form::Handle, Need::NonEmpty), checked(L"xpath", Form::Text, Need::Optional),
        checked(L"step", Form::Text, Need::NonEmpty), checked(L"destHandle", Form::NewHandle, Need::NonEmpty)},
       L"xmlForEach function is invalid",
       &expandXmlForEach},
  };
  return list;
}

const Loop* findLoop(std::string_view name) {
  for (const Loop& loop : loops())
    if (isAsciiName(name, loop.name)) return &loop;
  return nullptr;
}

bool usable(const Loop& loop, const TiXmlElement& element, std::wstring& why) {
  std::vector<const wchar_t*> needed;
  for (const Parameter& p : loop.parameters)
    if (p.need == Need::NonEmpty) needed.push_back(p.name);
  bool usable = element.Parent() != nullptr;
  why.clear();
  for (size_t i = 0; i < needed.size(); ++i) {
    why.append(i == 0 ? L"'" : i + 1 == needed.size() ? L" and '" : L", '").append(needed[i]).append(L"'");
    const char* value = element.Attribute(platform::toUtf8(needed[i]).c_str());
    usable = usable && value && *value;
  }
  why += L" must be present and not empty";
  return usable;
}

}  // namespace engine
