// Replays the differential corpus: expressions over corpus/*.xml whose expected
// string() results were produced by libxml2 and a JavaScript engine (the
// recommendation deciding where the two differ), stored in corpus/*.expected.
#include "xpath/xpath.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

// The oracle writes a backslash, tab or newline in a result as \\, \t, \n.
std::string unescape(const std::string& s) {
  std::string out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] != '\\' || i + 1 == s.size()) {
      out += s[i];
      continue;
    }
    char c = s[++i];
    out += c == 't' ? '\t' : c == 'n' ? '\n' : c == 'r' ? '\r' : c;
  }
  return out;
}

void replay(const std::string& name) {
  const std::string dir = XPATH_CORPUS_DIR;
  TiXmlBase::SetCondenseWhiteSpace(false);  // as the program reads documents
  TiXmlDocument doc;
  ASSERT_TRUE(doc.LoadFile((dir + "/" + name + ".xml").c_str())) << doc.ErrorDesc();
  ASSERT_NE(doc.RootElement(), nullptr);
  std::ifstream in(dir + "/" + name + ".expected", std::ios::binary);
  ASSERT_TRUE(in) << "missing " << name << ".expected";

  std::string line;
  int checked = 0, failed = 0;
  std::ostringstream report;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    // id, area, expression, expected, note
    std::istringstream fields(line);
    std::string id, area, expression, expected;
    std::getline(fields, id, '\t');
    std::getline(fields, area, '\t');
    std::getline(fields, expression, '\t');
    std::getline(fields, expected, '\t');
    std::optional<std::string> got = xpath::evaluateString(expression, *doc.RootElement());
    expected = unescape(expected);
    std::string shown = got ? *got : "ERROR";
    ++checked;
    if (shown == expected) continue;
    if (++failed <= 25)
      report << id << " [" << area << "] " << expression << "\n  expected: " << expected
             << "\n  got:      " << shown << "\n";
  }
  EXPECT_GT(checked, 500);
  EXPECT_EQ(failed, 0) << failed << " of " << checked << " differ:\n" << report.str();
}

TEST(XPathCorpus, Tree) { replay("tree"); }
TEST(XPathCorpus, Config) { replay("config"); }

}  // namespace
