#pragma once
// Where the node functions start: the element a handle names.
#include <cstdint>
#include <string>

#include "engine/handles.h"
#include "functions/xml/detail/cov_tiny_xml.h"

namespace api::xml {

struct Context {
  TiXmlElement* element = nullptr;  // a document's root element, or the handle's element
  HeldElements* held = nullptr;     // the handles into that element's document
};

// 0, or the error code: 6 when the name is not an XML handle (or its element
// is gone), 1168 when the document has no root element.
uint32_t findContext(engine::HandleTable& handles, const std::wstring& name, Context& out);

}  // namespace api::xml
