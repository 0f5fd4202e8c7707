#include "engine/log.h"
#include "functions/xml/detail/context.h"
#include "functions/xml/functions.h"
#include "platform/errors.h"
#include "platform/text.h"

namespace api::xml {
namespace {

using engine::Need;

// The first node of `xpath` when it is a child of `parent`; an empty or
// unmatched expression finds nothing.
TiXmlNode* siblingIn(TiXmlElement& parent, TiXmlNode& context, const std::wstring& xpath) {
  if (xpath.empty()) return nullptr;
  const std::string expression = platform::toUtf8(xpath);
  TiXmlNode* node = COVTinyXml::findNode(context, &expression);
  return node && node->Parent() == &parent ? node : nullptr;
}

// 0 or the error code.
uint32_t addChild(engine::HandleTable& handles, const std::wstring& handle, const std::wstring& xpath,
                  const std::wstring& data, const std::wstring& before, const std::wstring& after,
                  const std::wstring& cdata) {
  std::unique_ptr<TiXmlElement> child = COVTinyXml::parseFragment(platform::toUtf8(data));
  if (!child) return platform::kErrorInvalidData;
  if (!cdata.empty()) {
    const std::string text = platform::toUtf8(cdata);
    // A CDATA section cannot hold its own end marker.
    if (text.find("]]>") != std::string::npos) return platform::kErrorInvalidData;
    auto section = std::make_unique<TiXmlText>(text);
    section->SetCDATA(true);
    child->LinkEndChild(section.release());
  }
  Context context;
  if (const uint32_t error = findContext(handles, handle, context)) return error;
  const std::string parentPath = platform::toUtf8(xpath);
  TiXmlNode* found = COVTinyXml::findNode(*context.element, &parentPath);
  TiXmlElement* parent = found ? found->ToElement() : nullptr;
  if (!parent) return platform::kErrorPathNotFound;
  if (!COVTinyXml::fitsBelow(*parent, *child)) return platform::kErrorInvalidData;
  if (TiXmlNode* next = siblingIn(*parent, *context.element, before))
    parent->InsertBeforeChild(next, *child);
  else if (TiXmlNode* previous = siblingIn(*parent, *context.element, after))
    parent->InsertAfterChild(previous, *child);
  else
    parent->LinkEndChild(child.release());
  return 0;
}

}  // namespace

const Parameters& FunctionXmlAddChild::parameters() {
  static const Parameters list = {engine::text<&FunctionXmlAddChild::xpath_>(L"xpath", Need::NonEmpty),
      engine::handle<&FunctionXmlAddChild::handle_>(L"handle", Need::NonEmpty),
      engine::text<&FunctionXmlAddChild::data_>(L"data", Need::NonEmpty),
      engine::text<&FunctionXmlAddChild::insertBefore_>(L"insert_before", Need::Optional),
      engine::text<&FunctionXmlAddChild::insertAfter_>(L"insert_after", Need::Optional),
      engine::text<&FunctionXmlAddChild::cdata_>(L"cdata", Need::Optional)};
  return list;
}

void FunctionXmlAddChild::execute() {
  clearResult();
  const std::wstring xpath = expand(xpath_), data = expand(data_);
  engine::log(L"xmlAddChild in '%s' at '%s'. xml: '%s'", handle_.c_str(), xpath.c_str(), data.c_str());
  if (const uint32_t error =
          addChild(handles(), handle_, xpath, data, expand(insertBefore_), expand(insertAfter_), expand(cdata_)))
    fail(error);
  logEnd();
}

const engine::TagDoc FunctionXmlAddChild::doc{
    L"Adds the element `data` (XML text, or the text of a `<data>` child: one element, after an optional XML declaration) as a child of the first element `xpath` finds from the handle's context (a document's root element, or an element handle's element). It goes before the node `insert_before` finds among that parent's children, else after the one `insert_after` finds, else at the end; a non-empty `cdata` goes inside it as a CDATA section. All but `handle` are expanded when it runs.",
    L"xmlAddChild in '%s' at '%s'. xml: '%s'\nxmlAddChild function end with %s. err:'%s'",
    L"Error text: `13` `data` is not one element (or `cdata` holds `]]>`, or the result would nest too deep), `6` an unknown or stale handle, `1168` a document without root element, `3` `xpath` does not parse or finds no element.",
    L"<xmlOpen path=\"%enginedir%app.config\" handle=\"cfg\"/>\n<xmlAddChild handle=\"cfg\" xpath=\"servers\" data=\"&lt;server name='delta'/&gt;\" insert_after=\"server[last()]\"/>"};

}  // namespace api::xml
