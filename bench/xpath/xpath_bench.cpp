// Typical configuration-file queries over a generated ~10 MB document, timed
// for our evaluator, for libxml2 and for pugixml on the same document and
// expressions in the same run. Prints one line per query and per query class,
// then how a predicate that does not depend on its context node scales with
// the document. Exits 1 if the results differ.
#include "xpath/xpath.h"

#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <tinyxml.h>

#include <pugixml.hpp>

#include <chrono>
#include <cstdio>
#include <cstdlib>
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

// Each engine compiles the expression, evaluates it from the root element and
// converts the result to a string, as one xmlGetValue does.
std::string ours(const TiXmlElement& root, const char* expr) {
  return xpath::evaluateString(expr, root).value_or("<failed>");
}

std::string libxml2(xmlDocPtr doc, const char* expr) {
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

std::string pugixml(const pugi::xml_document& doc, const char* expr) {
  try {
    return pugi::xpath_query(expr).evaluate_string(doc.document_element());
  } catch (const pugi::xpath_exception&) {
    return "<failed>";
  }
}

// Seconds per evaluation: repeats until about a quarter second has passed.
template <class F>
double timeIt(F&& f, double budget = 0.25) {
  int runs = 0;
  auto start = Clock::now();
  double elapsed = 0;
  do {
    f();
    ++runs;
    elapsed = std::chrono::duration<double>(Clock::now() - start).count();
  } while (elapsed < budget && runs < 100000);
  return elapsed / runs;
}

struct Times {
  double ours = 0, libxml2 = 0, pugixml = 0;
};

// `count(//*[count(//*) > 0])` evaluates its predicate once per element; the
// predicate does not depend on that element, so the whole query should cost a
// few walks over the document, growing linearly with it.
void contextIndependentScaling() {
  const char* expr = "count(//*[count(//*) > 0])";
  std::printf("\n%s (evaluated once per run, not once per element)\n", expr);
  std::printf("%12s %12s %14s\n", "elements", "ours ms", "ms per 1000");
  for (int elements : {4000, 40000, 400000}) {
    // A tree of nested groups, each holding nine empty elements.
    std::string xml = "<r>";
    for (int i = 1; i < elements; ++i) xml += i % 10 ? "<e/>" : "<g>";
    for (int i = 10; i < elements; i += 10) xml += "</g>";
    xml += "</r>";
    TiXmlDocument doc;
    doc.Parse(xml.c_str());
    std::string result = ours(*doc.RootElement(), expr);
    double t = timeIt([&] { ours(*doc.RootElement(), expr); }, 0.5);
    std::printf("%12d %12.3f %14.4f   (result %s)\n", elements, t * 1e3, t * 1e6 / elements, result.c_str());
    if (t > 2) break;  // quadratic: the next size would take minutes
  }
}

// `--loop EXPR [SECONDS]`: evaluates one expression with our engine only, over
// and over, so a profiler sees nothing else.
int loopOne(const char* expr, double seconds) {
  TiXmlDocument doc;
  doc.Parse(makeDocument().c_str());
  if (doc.Error() || !doc.RootElement()) return 2;
  std::string result = ours(*doc.RootElement(), expr);
  double t = timeIt([&] { ours(*doc.RootElement(), expr); }, seconds);
  std::printf("%s = %s: %.3f ms per evaluation\n", expr, result.c_str(), t * 1e3);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc >= 3 && std::string(argv[1]) == "--loop") return loopOne(argv[2], argc > 3 ? std::atof(argv[3]) : 5);
  std::string xml = makeDocument();
  std::printf("document: %.1f MB\n", xml.size() / 1e6);

  TiXmlDocument tiny;
  tiny.Parse(xml.c_str());
  xmlDocPtr lib = xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "bench.xml", nullptr, XML_PARSE_HUGE);
  pugi::xml_document pug;
  bool pugParsed = pug.load_buffer(xml.data(), xml.size());
  if (tiny.Error() || !lib || !tiny.RootElement() || !pugParsed) {
    std::fprintf(stderr, "document did not parse\n");
    return 2;
  }

  std::map<std::string, Times> byKind;
  bool same = true;
  std::printf("%-100s %10s %10s %10s %8s %8s\n", "query (ms per evaluation)", "ours", "libxml2", "pugixml",
              "lx/ours", "pg/ours");
  for (const Query& q : kQueries) {
    std::string a = ours(*tiny.RootElement(), q.expr), b = libxml2(lib, q.expr), c = pugixml(pug, q.expr);
    if (a != b || a != c) {
      std::fprintf(stderr, "results differ for %s: ours '%s', libxml2 '%s', pugixml '%s'\n", q.expr, a.c_str(),
                   b.c_str(), c.c_str());
      same = false;
    }
    Times t;
    t.ours = timeIt([&] { ours(*tiny.RootElement(), q.expr); });
    t.libxml2 = timeIt([&] { libxml2(lib, q.expr); });
    t.pugixml = timeIt([&] { pugixml(pug, q.expr); });
    std::printf("%-100s %10.3f %10.3f %10.3f %7.2fx %7.2fx\n", q.expr, t.ours * 1e3, t.libxml2 * 1e3, t.pugixml * 1e3,
                t.libxml2 / t.ours, t.pugixml / t.ours);
    Times& k = byKind[q.kind];
    k.ours += t.ours;
    k.libxml2 += t.libxml2;
    k.pugixml += t.pugixml;
  }
  std::printf("\n%-30s %10s %10s %10s %8s %8s\n", "query class (ms)", "ours", "libxml2", "pugixml", "lx/ours",
              "pg/ours");
  for (const auto& [kind, t] : byKind)
    std::printf("%-30s %10.3f %10.3f %10.3f %7.2fx %7.2fx\n", kind.c_str(), t.ours * 1e3, t.libxml2 * 1e3,
                t.pugixml * 1e3, t.libxml2 / t.ours, t.pugixml / t.ours);
  xmlFreeDoc(lib);
  xmlCleanupParser();

  contextIndependentScaling();
  return same ? 0 : 1;
}
