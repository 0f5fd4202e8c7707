// Engine units that need Windows: the program's vocabulary of every family,
// and the companion password command. The pure units are in core_tests.cpp.
#include <gtest/gtest.h>
#include <tinyxml.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "engine/cipher_text.h"
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
    EXPECT_NE(example.find("<" + name + " "), std::string::npos) << name << " is not in its example";
    TiXmlDocument document;
    document.Parse(("<script version=\"1.1\">" + example + "</script>").c_str());
    ASSERT_FALSE(document.Error()) << name << ": " << document.ErrorDesc();
    engine::Engine engine(registry);
    EXPECT_TRUE(engine.prepare(document, {})) << name << "\n" << example;
    engine.reset();
  }
}

TEST_F(Vocabulary, KindsFollowTheClassesAndHandlersTheKinds) {
  for (const wchar_t* tag : {L"exit", L"assign", L"goto", L"fileClose", L"xmlClose"})
    EXPECT_EQ(registry.lookup(tag)->kind, engine::FunctionKind::Plain) << tag;
  for (const wchar_t* tag : {L"traceSetFile", L"dirCreate", L"xmlOpen"})
    EXPECT_EQ(registry.lookup(tag)->kind, engine::FunctionKind::Error) << tag;
  for (const wchar_t* tag : {L"test", L"fileExists", L"jsonOpen", L"fileWrite"})
    EXPECT_EQ(registry.lookup(tag)->kind, engine::FunctionKind::Bool) << tag;
  EXPECT_EQ(registry.lookup(L"for"), nullptr);
  EXPECT_EQ(engine::handlerNames(engine::FunctionKind::Plain).size(), 0u);
  EXPECT_EQ(engine::handlerNames(engine::FunctionKind::Bool).size(), 2u);
  EXPECT_EQ(engine::handlerNames(engine::FunctionKind::Error).size(), 3u);
}

// The companion command's output deciphers to the password it was given.
TEST(CipherText, CompanionCommandOutputDeciphers) {
  std::wstring command = L"\"" UPKEEP_PASSWORD_EXE L"\" \"pa ss\"";
  SECURITY_ATTRIBUTES inherit{sizeof(inherit), nullptr, TRUE};
  HANDLE readEnd = nullptr, writeEnd = nullptr;
  ASSERT_TRUE(CreatePipe(&readEnd, &writeEnd, &inherit, 0));
  SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = writeEnd;
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process));
  CloseHandle(writeEnd);
  std::string output;
  char buffer[256];
  DWORD read = 0;
  while (ReadFile(readEnd, buffer, sizeof buffer, &read, nullptr) && read) output.append(buffer, read);
  WaitForSingleObject(process.hProcess, INFINITE);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  CloseHandle(readEnd);
  while (!output.empty() && (output.back() == '\n' || output.back() == '\r')) output.pop_back();
  const auto plain = engine::decipherHex(std::wstring(output.begin(), output.end()));
  ASSERT_TRUE(plain) << output;
  EXPECT_EQ(std::string(plain->c_str()), "pa ss");
}

}  // namespace
