// Typical configuration-file queries over a generated ~10 MB document, timed
// for our evaluator and for libxml2 on the same document and expressions in the
// same run. Prints one line per query class and exits 1 if the results differ.
#include "xpath/xpath.h"

#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <tinyxml.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

std::string makeDocument() {
  std::string xml = "<config version=\"1.1\">";
  for (int s = 0; s < 1350; ++s) {
    xml += "<section name=\"s" + std::to_string(s) + "\" id=\"id" + std::to_string(s * 7) + "\">";
    for (int i = 0; i < 120; ++i) {
      xml += "<item key=\"k" + std::to_string(i) + "\" type=\"" + (i % 3 ? "int" : "string") + "\" enabled=\"" +
             (i % 5 ? "true" : "false") + "\">value " + std::to_string(s * 1000 + i) + "</item>";
    }
    if (s % 100 == 99) xml += "<setting name=\"limit\">" + std::to_string(s) + "</setting>";
    xml += "</section>";
  }
  return xml + "</config>";
}

struct Query {
  const char* kind;
  const char* expr;
};

const Query kQueries[] = {
    {"path + attribute predicates", "string(/config/section[@name='s731']/item[@key='k42'])"},
    {"path + attribute predicates", "string(/config/section[@id='id3500']/item[@type='int'][3]/@key)"},
    {"path + attribute predicates", "/config/section[@name='s999']/item[@key='k119']/@enabled"},
    {"//name", "string(//setting[@name='limit'][last()])"},
    {"//name", "string(//item[@key='k7'])"},
    {"//name", "name(//section[last()]/*[1])"},
    {"count()", "count(//item)"},
    {"count()", "count(//item[@type='int'][@enabled='true'])"},
    {"count()", "count(/config/section/item[@key='k1'])"},
    {"string functions", "count(//item[starts-with(@key, 'k11')])"},
    {"string functions", "count(//item[contains(., '99')])"},
    {"string functions", "string-length(normalize-space(/config/section[@name='s5']/item[@key='k5']))"},
    {"string functions", "translate(substring-after(/config/section[500]/item[60], ' '), '0123456789', 'abcdefghij')"},
};

using Clock = std::chrono::steady_clock;

std::string ours(const TiXmlElement& root, const char* expr) {
  return xpath::evaluateString(expr, root).value_or("<failed>");
}

std::string theirs(xmlDocPtr doc, const char* expr) {
  xmlXPathContextPtr ctx = xmlXPathNewContext(doc);
  ctx->node = xmlDocGetRootElement(doc);
  xmlXPathObjectPtr obj = xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(expr), ctx);
  std::string out = "<failed>";
  if (obj) {
    xmlChar* s = xmlXPathCastToString(obj);
    out = reinterpret_cast<const char*>(s);
    xmlFree(s);
    xmlXPathFreeObject(obj);
  }
  xmlXPathFreeContext(ctx);
  return out;
}

// Seconds per evaluation: repeats until about a quarter second has passed.
template <class F>
double timeIt(F&& f) {
  int runs = 0;
  auto start = Clock::now();
  double elapsed = 0;
  do {
    f();
    ++runs;
    elapsed = std::chrono::duration<double>(Clock::now() - start).count();
  } while (elapsed < 0.25 && runs < 100000);
  return elapsed / runs;
}

}  // namespace

int main() {
  std::string xml = makeDocument();
  std::printf("document: %.1f MB\n", xml.size() / 1e6);

  TiXmlDocument tiny;
  tiny.Parse(xml.c_str());
  xmlDocPtr lib = xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "bench.xml", nullptr, XML_PARSE_HUGE);
  if (tiny.Error() || !lib || !tiny.RootElement()) {
    std::fprintf(stderr, "document did not parse\n");
    return 2;
  }

  struct Totals {
    double ours = 0, theirs = 0;
  };
  std::map<std::string, Totals> byKind;
  bool same = true;
  for (const Query& q : kQueries) {
    std::string a = ours(*tiny.RootElement(), q.expr), b = theirs(lib, q.expr);
    if (a != b) {
      std::fprintf(stderr, "results differ for %s: ours '%s', libxml2 '%s'\n", q.expr, a.c_str(), b.c_str());
      same = false;
    }
    double t1 = timeIt([&] { ours(*tiny.RootElement(), q.expr); });
    double t2 = timeIt([&] { theirs(lib, q.expr); });
    std::printf("  %-100s ours %9.3f ms  libxml2 %9.3f ms  x%.2f\n", q.expr, t1 * 1e3, t2 * 1e3, t2 / t1);
    byKind[q.kind].ours += t1;
    byKind[q.kind].theirs += t2;
  }
  std::printf("\n%-30s %12s %12s %8s\n", "query class", "ours ms", "libxml2 ms", "speed-up");
  for (const auto& [kind, t] : byKind)
    std::printf("%-30s %12.3f %12.3f %7.2fx\n", kind.c_str(), t.ours * 1e3, t.theirs * 1e3, t.theirs / t.ours);
  xmlFreeDoc(lib);
  xmlCleanupParser();
  return same ? 0 : 1;
}
