#pragma once
// `for` and `xmlForEach` are not functions: before the functions are built, each
// is rewritten in place into plain elements with generated labels.
class TiXmlElement;

namespace engine {

// Replace the loop element by its expansion and return the first inserted
// element, or nullptr (document unchanged) when its attributes are invalid.
TiXmlElement* expandFor(TiXmlElement& loop);
TiXmlElement* expandXmlForEach(TiXmlElement& loop);

}  // namespace engine
