// libFuzzer target for the XPath evaluator. The input's first line is the
// expression, the rest an XML document; evaluation is bounded so a slow input
// is a failed evaluation, not a timeout.
#include "xpath/xpath.h"

#include <tinyxml.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  std::size_t newline = input.find('\n');
  if (newline == std::string_view::npos || newline > 2048 || size - newline > 4096) return 0;
  std::string_view expression = input.substr(0, newline);
  std::string xml(input.substr(newline + 1));  // TinyXML wants a terminated string

  TiXmlDocument doc;
  doc.Parse(xml.c_str());
  const TiXmlNode* context = doc.RootElement() ? static_cast<const TiXmlNode*>(doc.RootElement()) : &doc;

  auto compiled = xpath::Expression::compile(expression);
  if (!compiled) return 0;
  xpath::Limits limits;
  limits.maxNodeVisits = 200000;
  limits.maxNodeSetSize = 20000;
  if (auto v = compiled->evaluate(*context, limits)) {
    (void)v->toString();
    (void)v->toNumber();
  }
  (void)compiled->evaluate(doc, limits);
  return 0;
}
