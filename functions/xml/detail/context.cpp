#include "functions/xml/detail/context.h"

#include "platform/errors.h"

namespace api::xml {

uint32_t findContext(engine::HandleTable& handles, const std::wstring& name, Context& out) {
  const engine::HandleTable::Entry* entry = handles.find(name);
  if (!entry || !entry->object) return platform::kErrorInvalidHandle;
  if (entry->kind == COVTinyXml::kind) {
    auto& document = static_cast<COVTinyXml&>(*entry->object);
    out.element = document.document().RootElement();
    out.held = &document.held();
    return out.element ? 0 : platform::kErrorNotFound;
  }
  if (entry->kind == XmlElementHandle::kind) {
    const auto& handle = static_cast<const XmlElementHandle&>(*entry->object);
    out.element = handle.element();
    out.held = handle.held();
    return out.element ? 0 : platform::kErrorInvalidHandle;
  }
  return platform::kErrorInvalidHandle;
}

}  // namespace api::xml
