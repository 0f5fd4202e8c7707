// Engine units that need the families: the program's vocabulary. The pure
// units are in core_tests.cpp.
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "engine/engine.h"
#include "engine/registry.h"
#include "functions/families.h"
#include "platform/text.h"

namespace {

// A value each form accepts.
std::string validValue(const engine::Parameter& p) {
  switch (p.form) {
    case engine::Form::Integer: return "1";
    case engine::Form::Flag: return "true";
    case engine::Form::Label: return "there";
    case engine::Form::Choice: return platform::toUtf8(p.choices.front());
    default: return "x";
  }
}

// Whether the XML text holds an element `name`, with or without attributes
// (`<name/>` counts; `<nameSuffix` does not).
bool hasElement(const std::string& xml, const std::string& name) {
  const std::string open = "<" + name;
  for (size_t at = xml.find(open); at != std::string::npos; at = xml.find(open, at + 1)) {
    const size_t after = at + open.size();
    if (after < xml.size() && std::string_view(" \t\r\n/>").find(xml[after]) != std::string_view::npos) return true;
  }
  return false;
}

// Prepares a script of one `tag` element carrying every described attribute
// but `left` (nullptr: none left out), `emptied` written empty. Returns
// whether it prepared, and the log of the preparation.
class Vocabulary : public ::testing::Test {
 protected:
  bool prepare(const engine::Tag& tag, const engine::Parameter* left, const engine::Parameter* emptied,
               std::string& log) {
    const std::string trace = (std::filesystem::temp_directory_path() / "upkeep-vocabulary.log").string();
    std::filesystem::remove(trace);
    std::ostringstream script;
    script << "<s version=\"1.1\" log=\"" << trace << "\"><" << platform::toUtf8(tag.name);
    for (const engine::Parameter& p : tag.parameters()) {
      if (&p == left) continue;
      script << ' ' << platform::toUtf8(p.name) << "=\"" << (&p == emptied ? "" : validValue(p)) << '"';
    }
    script << "/><nothing id=\"there\"/></s>";
    TiXmlDocument document;
    document.Parse(script.str().c_str());
    engine::Engine engine(registry);
    const bool prepared = engine.prepare(document, {});
    engine.reset();
    std::ifstream in(trace);
    log.assign(std::istreambuf_iterator<char>(in), {});
    return prepared;
  }

  // The first handler in the function list `list` that its function's kind
  // does not run (preparation passes over it in silence), as "tag/handler";
  // empty when there is none.
  std::string misplacedHandler(const TiXmlElement& list) const {
    for (const TiXmlElement* f = list.FirstChildElement(); f; f = f->NextSiblingElement()) {
      const engine::Tag* tag = registry.lookup(f->ValueStr());
      if (!tag) continue;
      const auto handlers = engine::handlerNames(tag->kind);
      for (const TiXmlElement* h = f->FirstChildElement(); h; h = h->NextSiblingElement()) {
        const std::wstring handler = platform::fromUtf8(h->Value());
        if (std::find(handlers.begin(), handlers.end(), handler) == handlers.end()) {
          if (handler != L"data") return std::string(f->Value()) + "/" + h->Value();
        } else if (std::string inner = misplacedHandler(*h); !inner.empty()) {
          return inner;
        }
      }
    }
    return {};
  }

  const engine::FunctionRegistry registry = api::makeFunctionRegistry();
};

// Every tag prepares with its described attributes, and is refused with the
// documented line when a required one is missing or a non-empty one empty.
TEST_F(Vocabulary, EveryTagPreparesAsDescribedAndRefusesWhatIsMissing) {
  ASSERT_GT(registry.size(), 50u);
  for (const engine::Tag* tag : registry.tags()) {
    const std::string refusal = "Function '" + platform::toUtf8(tag->name) + "' has invalid parameters (attributes)";
    std::string log;
    EXPECT_TRUE(prepare(*tag, nullptr, nullptr, log)) << platform::toUtf8(tag->name) << "\n" << log;
    for (const engine::Parameter& p : tag->parameters()) {
      const std::string what = platform::toUtf8(tag->name) + " " + platform::toUtf8(p.name);
      if (p.need != engine::Need::Optional) {
        EXPECT_FALSE(prepare(*tag, &p, nullptr, log)) << what;
        EXPECT_NE(log.find(refusal), std::string::npos) << what << "\n" << log;
      }
      if (p.need == engine::Need::NonEmpty) EXPECT_FALSE(prepare(*tag, nullptr, &p, log)) << what << " empty";
      if (p.form == engine::Form::Choice) {
        EXPECT_FALSE(prepare(*tag, nullptr, &p, log)) << what << " not a choice";
      }
    }
  }
}

// Every tag is documented for the reference, and its example prepares.
TEST_F(Vocabulary, EveryTagIsDocumentedWithAnExampleThatPrepares) {
  for (const engine::Tag* tag : registry.tags()) {
    const std::string name = platform::toUtf8(tag->name);
    ASSERT_NE(tag->doc, nullptr) << name;
    for (const wchar_t* text : {tag->doc->summary, tag->doc->log, tag->doc->results, tag->doc->example})
      EXPECT_TRUE(text && *text) << name;
    if (!tag->doc->example) continue;
    const std::string example = platform::toUtf8(tag->doc->example);
    EXPECT_TRUE(hasElement(example, name)) << name << " is not in its example";
    TiXmlDocument document;
    document.Parse(("<script version=\"1.1\">" + example + "</script>").c_str());
    ASSERT_FALSE(document.Error()) << name << ": " << document.ErrorDesc();
    engine::Engine engine(registry);
    EXPECT_TRUE(engine.prepare(document, {})) << name << "\n" << example;
    EXPECT_EQ(misplacedHandler(*document.RootElement()), "") << name;
    engine.reset();
  }
}

// The reference names every attribute of a tag, its log lines are templates
// of the log's own conversions, and they end as the tag's kind makes them end.
TEST_F(Vocabulary, ReferenceNamesEveryAttributeAndTheEndLineOfItsKind) {
  for (const engine::Tag* tag : registry.tags()) {
    if (!tag->doc || !tag->doc->summary || !tag->doc->results || !tag->doc->log) continue;
    const std::string name = platform::toUtf8(tag->name);
    const std::string prose = platform::toUtf8(tag->doc->summary) + platform::toUtf8(tag->doc->results);
    for (const engine::Parameter& p : tag->parameters()) {
      // `name` or `name="value"`.
      const std::string attribute = '`' + platform::toUtf8(p.name);
      size_t at = prose.find(attribute);
      while (at != std::string::npos && std::string_view("`=").find(prose[at + attribute.size()]) == std::string_view::npos)
        at = prose.find(attribute, at + 1);
      EXPECT_NE(at, std::string::npos) << name << " leaves out " << attribute << '`';
    }
    const std::string log = platform::toUtf8(tag->doc->log);
    for (size_t at = log.find('%'); at != std::string::npos; at = log.find('%', at + 1)) {
      const std::string_view rest = std::string_view(log).substr(at + 1);
      EXPECT_TRUE(rest.starts_with("s") || rest.starts_with("d") || rest.starts_with("p") || rest.starts_with("hs"))
          << name << ": " << log.substr(at, 4);
    }
    const bool errorEnd = log.find(" function end with %s. err:'%s'") != std::string::npos;
    EXPECT_EQ(errorEnd, tag->kind == engine::FunctionKind::Error) << name;
    if (tag->kind == engine::FunctionKind::Plain) {
      EXPECT_EQ(log.find(" end with "), std::string::npos) << name;
    }
  }
}

}  // namespace
