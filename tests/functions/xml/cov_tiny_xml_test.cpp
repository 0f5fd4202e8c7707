// The document wrapper against TinyXML itself, under Wine.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "functions/xml/detail/cov_tiny_xml.h"
#include "functions/xml/detail/xml_characters.h"

namespace api::xml {
namespace {

std::string readBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeBytes(const std::string& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }

std::wstring wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

std::string savedAfterLoading(const std::string& name, const std::string& text) {
  writeBytes(name, text);
  COVTinyXml document;
  if (!document.load(wide(name).c_str()) || !document.save(wide(name).c_str())) return "failed";
  return readBytes(name);
}

// Loading and saving through the wrapper gives exactly what TinyXML's own
// LoadFile and SaveFile give, where TinyXML keeps the values.
TEST(COVTinyXml, SavesWhatTinyXmlSaves) {
  TiXmlBase::SetCondenseWhiteSpace(false);  // as the wrapper reads documents
  const char* documents[] = {
      "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n<a x='1' y=\"it's\">t&amp;&lt;&#x1F600;</a>",
      "\xEF\xBB\xBF<a>\r\n<b/>\r<c>x</c></a>",
      "<!DOCTYPE a>\n<a><![CDATA[raw <b>]]><i/><!-- c --></a>\n<!-- after -->",
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

// Past ten levels every element is indented as the tenth, so a deep document's
// saved text grows with its size, not with the square of its depth.
TEST(COVTinyXml, IndentationStopsGrowingAfterTenLevels) {
  std::string text;
  for (int level = 0; level < 12; ++level) text += "<e" + std::to_string(level) + ">";
  for (int level = 12; level-- > 0;) text += "</e" + std::to_string(level) + ">";
  writeBytes("deep.xml", text);
  COVTinyXml document;
  ASSERT_TRUE(document.load(L"deep.xml"));
  ASSERT_TRUE(document.save(L"deep-saved.xml"));
  const std::string saved = readBytes("deep-saved.xml");
  EXPECT_NE(saved.find("\r\n" + std::string(36, ' ') + "<e9>"), std::string::npos);
  EXPECT_NE(saved.find("\r\n" + std::string(40, ' ') + "<e10>"), std::string::npos);
  EXPECT_NE(saved.find("\r\n" + std::string(40, ' ') + "<e11 />"), std::string::npos);
  EXPECT_NE(saved.find("\r\n" + std::string(40, ' ') + "</e10>"), std::string::npos);
}

// Where TinyXML's printer would change a value read back, the save keeps the
// value: spaces, line breaks and tabs in text, mixed content, references to
// declared entities, a document type declaration with an internal subset.
TEST(COVTinyXml, SavesKeepEveryValue) {
  const struct {
    const char* text;
    const char* saved;
  } cases[] = {
      {"<a xml:space='preserve'>  two  spaces  </a>", "<a xml:space=\"preserve\">  two  spaces  </a>\r\n"},
      {"<a><b>line one\r\n\tline two\n</b></a>", "<a>\r\n    <b>line one\r\n\tline two\r\n</b>\r\n</a>\r\n"},
      {"<a>\n  <b> </b>\n</a>", "<a>\r\n    <b> </b>\r\n</a>\r\n"},
      {"<a v='x&#10;y'>&#13;</a>", "<a v=\"x&#x0A;y\">&#x0D;</a>\r\n"},
      {"<p>Hello <b>big <i>wide</i></b> world<![CDATA[<raw>]]><!-- c --></p>",
       "<p>Hello <b>big <i>wide</i></b> world<![CDATA[<raw>]]><!-- c --></p>\r\n"},
      {"<!DOCTYPE cfg [\n  <!ENTITY e \"v>w\">\n  <!-- ] > -->\n]>\n<cfg a='&e;'>&e; &amp;f;</cfg>",
       "<!DOCTYPE cfg [\r\n  <!ENTITY e \"v>w\">\r\n  <!-- ] > -->\r\n]>\r\n<cfg a=\"&e;\">&e; &amp;f;</cfg>\r\n"},
  };
  int index = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const std::string name = "kept" + std::to_string(index++) + ".xml";
    const std::string saved = savedAfterLoading(name, c.text);
    EXPECT_EQ(saved, c.saved);
    EXPECT_EQ(savedAfterLoading(name, saved), saved);  // and a second save changes nothing
  }
}

// Malformed input is refused, not cut short or left out.
TEST(COVTinyXml, RefusesWhatIsNotXml) {
  for (const char* bad : {"<a>x&#0;y</a>", "<a v='&#x;'/>", "<a>&#;</a>", "<a>&#xD800;</a>", "<a>&#x110000;</a>",
                          "<a>&#99999999999;</a>", "<a>&#1;</a>", "<a>&#xFFFE;</a>", "<a/>trailing",
                          "<a/><b/>text", "<!DOCTYPE a [ <!ENTITY e 'v'> <a/>"}) {
    writeBytes("bad.xml", bad);
    COVTinyXml document;
    EXPECT_FALSE(document.load(L"bad.xml")) << bad;
  }
  writeBytes("good.xml", "<a v='&#x9;&#10;&#xD7FF;&#xE000;&#x10FFFF;'>&#x1F600;&#65;</a>");
  COVTinyXml document;
  EXPECT_TRUE(document.load(L"good.xml"));
}

TEST(COVTinyXml, ParseFragmentTakesExactlyOneElement) {
  auto element = COVTinyXml::parseFragment("<?xml version='1.0'?>\n<a x='1'> <b/> </a>\n");
  ASSERT_TRUE(element);
  EXPECT_STREQ(element->Value(), "a");
  EXPECT_EQ(element->Parent(), nullptr);
  EXPECT_TRUE(element->FirstChildElement("b"));
  for (const char* bad : {"", "text", "<a>", "<a></b>", "<!-- only -->", "<a/><b/>", "<a/>text", "text<a/>",
                          "<!-- c --><a/>", "<a/><!-- c -->"})
    EXPECT_FALSE(COVTinyXml::parseFragment(bad)) << bad;
}

TEST(XmlCharacters, NamesAndTexts) {
  for (const char* name : {"a", "_", ":x", "a-b.c", "caf\xC3\xA9", "\xC3\xA9t\xC3\xA9", "x\xC2\xB7y", "\xF0\x90\x80\x80"})
    EXPECT_TRUE(isXmlName(name)) << name;
  for (const char* name : {"", "1bad", "-a", ".a", "a b", "a=b", "\xC3\x97", "a\xC3\x97", "a/b", "a\xC3"})
    EXPECT_FALSE(isXmlName(name)) << name;
  EXPECT_TRUE(isXmlText("tab\tline\r\n \xEF\xBF\xBD \xF4\x8F\xBF\xBF"));
  for (const char* text : {"a\x01", "\x1F", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xC3"})
    EXPECT_FALSE(isXmlText(text)) << text;
  EXPECT_FALSE(isXmlText(std::string_view("a\0b", 3)));
}

}  // namespace
}  // namespace api::xml
