// Every tag's example, run by the program itself: each line it logs is one of
// the templates the reference shows for the tags in the example, or one of
// the engine's own lines.
#include <gtest/gtest.h>
#include <tinyxml.h>
#include <windows.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "engine/log_lines.h"
#include "engine/registry.h"
#include "functions/families.h"
#include "platform/text.h"

namespace {

// Whether `text` is what `format` prints: %s and %hs stand for any text, %d
// and %u for digits, %p for 16 hex digits.
bool matches(std::string_view text, std::string_view format) {
  if (format.empty()) return text.empty();
  if (format[0] != '%' || format.substr(0, 2) == "%%") {
    const size_t width = format[0] == '%' ? 2 : 1;
    return !text.empty() && text[0] == format[0] && matches(text.substr(1), format.substr(width));
  }
  if (format.starts_with("%s") || format.starts_with("%hs")) {
    const std::string_view rest = format.substr(format[1] == 'h' ? 3 : 2);
    for (size_t taken = 0; taken <= text.size(); ++taken)
      if (matches(text.substr(taken), rest)) return true;
    return false;
  }
  const std::string_view rest = format.substr(2);
  if (format.starts_with("%p")) {
    if (text.size() < 16) return false;
    for (char c : text.substr(0, 16))
      if (!std::isxdigit(static_cast<unsigned char>(c))) return false;
    return matches(text.substr(16), rest);
  }
  size_t digits = !text.empty() && text[0] == '-' ? 1 : 0;
  const size_t first = digits;
  while (digits < text.size() && std::isdigit(static_cast<unsigned char>(text[digits]))) ++digits;
  return digits > first && matches(text.substr(digits), rest);
}

TEST(TemplateMatch, ConversionsStandForTheirText) {
  EXPECT_TRUE(matches("Copy 'a b' to 'c': 12", "Copy '%s' to '%s': %d"));
  EXPECT_TRUE(matches("n -3 at 00000000001A2B3C, 50%", "n %d at %p, 50%%"));
  EXPECT_FALSE(matches("n x", "n %d"));
  EXPECT_FALSE(matches("at 1A2B", "at %p"));
  EXPECT_FALSE(matches("Copy 'a' to", "Copy '%s' to '%s'"));
}

// Runs `command` through the command interpreter and returns its standard
// output. Wine's interpreter, on a busy machine, now and then fails to find
// the program: it is asked again then, since every run prints something.
std::string output(const std::wstring& command) {
  std::string text;
  for (int attempt = 0; attempt < 3 && text.empty(); ++attempt) {
    FILE* pipe = _wpopen((L"\"" + command + L"\"").c_str(), L"rb");
    if (!pipe) continue;
    char buffer[4096];
    for (size_t read; (read = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) text.append(buffer, read);
    _pclose(pipe);
  }
  return text;
}

// The tags of the elements in `element` and below it.
void collectTags(const engine::FunctionRegistry& registry, const TiXmlElement& element,
                 std::vector<const engine::Tag*>& found) {
  if (const engine::Tag* tag = registry.lookup(element.ValueStr())) found.push_back(tag);
  for (const TiXmlElement* child = element.FirstChildElement(); child; child = child->NextSiblingElement())
    collectTags(registry, *child, found);
}

// Examples left out, and why.
const wchar_t* skipReason(std::wstring_view tag) {
  if (tag == L"serviceCreate") return L"it would register a service in the prefix the other tests share";
  if (tag == L"fileDownload") return L"it would reach for a server on the network";
  return nullptr;
}

class TagExamples : public ::testing::Test {
 protected:
  // What the examples may leave in the prefix goes again.
  static void TearDownTestSuite() {
    std::error_code ignored;
    wchar_t programFiles[MAX_PATH] = {}, temp[MAX_PATH] = {};
    GetEnvironmentVariableW(L"ProgramFiles", programFiles, MAX_PATH);
    GetTempPathW(MAX_PATH, temp);
    std::filesystem::remove_all(std::filesystem::path(programFiles) / L"App", ignored);
    std::filesystem::remove(std::filesystem::path(temp) / L"update.log", ignored);
    std::filesystem::remove(std::filesystem::path(UPKEEP_EXE).parent_path() / L"update.log", ignored);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Contoso");
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Contoso");
  }

  const engine::FunctionRegistry registry = api::makeFunctionRegistry();
};

TEST_F(TagExamples, EveryLineAnExampleLogsIsOneOfItsTemplates) {
  std::filesystem::create_directories(UPKEEP_EXAMPLES_DIR);
  std::vector<std::string> framing;
  for (const engine::LogLine& line : engine::kFramingLines) framing.push_back(platform::toUtf8(line.format));
  for (const engine::Tag* tag : registry.tags()) {
    const std::string name = platform::toUtf8(tag->name);
    if (const wchar_t* reason = skipReason(tag->name)) {
      std::cout << name << " left out: " << platform::toUtf8(reason) << '\n';
      continue;
    }
    const std::string script = "<script version=\"1.1\">" + platform::toUtf8(tag->doc->example) + "</script>";
    TiXmlDocument document;
    document.Parse(script.c_str());
    std::vector<const engine::Tag*> used;
    collectTags(registry, *document.RootElement(), used);
    std::vector<std::string> templates = framing;
    for (const engine::Tag* user : used) {
      const std::string shown = platform::toUtf8(user->doc->log);
      for (size_t start = 0, end = 0; start <= shown.size(); start = end + 1) {
        end = std::min(shown.find('\n', start), shown.size());
        templates.push_back(shown.substr(start, end - start));
      }
    }
    const std::filesystem::path path = std::filesystem::path(UPKEEP_EXAMPLES_DIR) / (name + ".xml");
    std::ofstream(path, std::ios::binary) << script;
    const std::string log = output(L"\"" UPKEEP_EXE L"\" /file \"" + path.wstring() + L"\"");
    EXPECT_NE(log.find("Start executing"), std::string::npos) << name << "\n" << log;
    // A line may hold line ends of its own (a value written with CR LF): a
    // template may match up to four lines at once.
    for (size_t at = 0; at < log.size();) {
      size_t matched = std::string::npos, end = log.find("\r\n", at);
      for (int lines = 0; end != std::string::npos && lines < 4; end = log.find("\r\n", end + 2), ++lines) {
        const std::string_view line = std::string_view(log).substr(at, end - at);
        for (const std::string& format : templates)
          if (matches(line, format)) matched = end;
        if (matched != std::string::npos) break;
      }
      const size_t lineEnd = std::min(log.find("\r\n", at), log.size());
      if (matched == std::string::npos) {
        ADD_FAILURE() << name << " logged a line none of its templates makes: " << log.substr(at, lineEnd - at);
        matched = lineEnd;
      }
      at = matched + 2;
    }
  }
}

}  // namespace
