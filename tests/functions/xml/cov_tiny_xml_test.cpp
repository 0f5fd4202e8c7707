// The document wrapper against TinyXML itself, under Wine.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "functions/xml/detail/cov_tiny_xml.h"

namespace api::xml {
namespace {

std::string readBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeBytes(const std::string& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }

std::wstring wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

// Loading and saving through the wrapper gives exactly what TinyXML's own
// LoadFile and SaveFile give.
TEST(COVTinyXml, SavesWhatTinyXmlSaves) {
  const char* documents[] = {
      "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n<a x='1' y=\"it's\">t&amp;&lt;&#x9;</a>",
      "\xEF\xBB\xBF<a>\r\n<b/>\r<c>x</c></a>",
      "<!DOCTYPE a>\n<a><![CDATA[raw <b>]]><![CDATA[two]]>mixed<i/>tail<!-- c --></a>\n<!-- after -->",
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a v=\"caf\xE9\">caf\xE9 &#233;</a>",
      "<a>\n  <b>  spaced   text  </b>\n  <c><d><e f=\"\"/></d></c>\n</a>",
      "<a>caf\xC3\xA9 \xE2\x82\xAC</a>",
  };
  int index = 0;
  for (const char* text : documents) {
    SCOPED_TRACE(text);
    const std::string source = "src" + std::to_string(index) + ".xml";
    const std::string theirs = "theirs" + std::to_string(index) + ".xml";
    const std::string ours = "ours" + std::to_string(index) + ".xml";
    ++index;
    writeBytes(source, text);
    TiXmlDocument reference;
    ASSERT_TRUE(reference.LoadFile(source.c_str()));
    ASSERT_TRUE(reference.SaveFile(theirs.c_str()));
    COVTinyXml document;
    ASSERT_TRUE(document.load(wide(source).c_str()));
    ASSERT_TRUE(document.save(wide(ours).c_str()));
    EXPECT_EQ(readBytes(theirs), readBytes(ours));
    // A null path saves over the file it came from.
    ASSERT_TRUE(document.save(nullptr));
    EXPECT_EQ(readBytes(theirs), readBytes(source));
  }
}

TEST(COVTinyXml, ParseFragmentCopiesTheRootElementOnly) {
  auto element = COVTinyXml::parseFragment("<a x='1'><b/></a><c/>");
  ASSERT_TRUE(element);
  EXPECT_STREQ(element->Value(), "a");
  EXPECT_EQ(element->Parent(), nullptr);
  EXPECT_TRUE(element->FirstChildElement("b"));
  for (const char* bad : {"", "text", "<a>", "<a></b>", "<!-- only -->"})
    EXPECT_FALSE(COVTinyXml::parseFragment(bad)) << bad;
}

TEST(HeldElements, HandlesAreCutLooseWithTheirElementOrDocument) {
  auto document = std::make_unique<COVTinyXml>();
  document->document().Parse("<r><a><b/></a><c/></r>");
  TiXmlElement* a = document->document().RootElement()->FirstChildElement("a");
  TiXmlElement* b = a->FirstChildElement("b");
  TiXmlElement* c = document->document().RootElement()->FirstChildElement("c");
  auto toB = std::make_unique<XmlElementHandle>(*b, document->held());
  auto toB2 = std::make_unique<XmlElementHandle>(*b, document->held());
  auto toC = std::make_unique<XmlElementHandle>(*c, document->held());
  toB2.reset();  // one of two handles to the same element goes first

  document->held().dropSubtree(*a);
  a->Parent()->RemoveChild(a);
  EXPECT_EQ(toB->element(), nullptr);
  EXPECT_EQ(toC->element(), c);

  document.reset();
  EXPECT_EQ(toC->element(), nullptr);
  toB.reset();
  toC.reset();
}

}  // namespace
}  // namespace api::xml
