#include "engine/check_risks.h"

#include <string_view>

#include <tinyxml.h>

#include "engine/ascii.h"
#include "platform/format.h"
#include "platform/path.h"
#include "platform/text.h"

namespace engine {
namespace {

constexpr std::wstring_view kInterpreter = L"upkeep.exe";

std::wstring attribute(const TiXmlElement& element, const char* name) {
  const char* value = element.Attribute(name);
  return value ? platform::fromUtf8(value) : std::wstring();
}

std::wstring lower(std::wstring text) {
  for (wchar_t& c : text) c = asciiLower(c);
  return text;
}

// A text that starts with a variable is judged by what it holds when it runs,
// which the checker cannot know.
bool startsWithVariable(const std::wstring& text) { return !text.empty() && text.front() == L'%'; }

bool namesInterpreter(const std::wstring& name) {
  return equalsIgnoreAsciiCase(platform::fileName(name), kInterpreter) ||
         lower(name).find(L"%enginefname%") != std::wstring::npos;
}

}  // namespace

void RiskChecks::visit(const TiXmlElement& element, std::vector<Risk>& out) {
  const std::string_view tag = element.ValueStr();
  if (tag == "processRun") {
    checkRun(element, L"program", out);
  } else if (tag == "processEntrypoint") {
    checkRun(element, L"DLL", out);
  } else if (tag == "fileDownload") {
    const std::wstring file = lower(attribute(element, "file"));
    if (lower(attribute(element, "url")).rfind(L"http://", 0) == 0)
      unverified_[file] = element.Row();
    else
      unverified_.erase(file);
  } else if (tag == "fileIsSigned") {
    unverified_.erase(lower(attribute(element, "path")));
  } else if (tag == "processImpersonateUser") {
    const std::wstring password = attribute(element, "password"), encrypted = attribute(element, "encrypted");
    if (!password.empty() && !startsWithVariable(password) && encrypted != L"true" && encrypted != L"1")
      out.push_back({&element,
                     L"Function 'processImpersonateUser' has its password in plain text: give it enciphered, "
                     L"as upkeep-password.exe prints it, with encrypted=\"true\""});
  } else if (tag == "processWait" || tag == "processKill") {
    const std::wstring name = attribute(element, "name");
    if (!namesInterpreter(name)) return;
    out.push_back({&element, tag == "processWait"
                                 ? platform::format(L"Function 'processWait' waits for '%s', which is the interpreter "
                                                    L"itself: the wait lasts its whole waittime",
                                                    name.c_str())
                                 : platform::format(L"Function 'processKill' ends '%s', which is the interpreter "
                                                    L"itself: the script ends there",
                                                    name.c_str())});
  }
}

void RiskChecks::checkRun(const TiXmlElement& element, const wchar_t* what, std::vector<Risk>& out) {
  const std::wstring path = attribute(element, "path");
  const std::wstring function = platform::fromUtf8(element.Value());
  if (!path.empty() && !startsWithVariable(path) && !platform::isFullPath(path))
    out.push_back({&element, platform::format(L"Function '%s' names its %s '%s' without a full path: Windows may "
                                              L"take a file of that name from a folder others can write to",
                                              function.c_str(), what, path.c_str())});
  const auto download = unverified_.find(lower(path));
  if (download == unverified_.end()) return;
  out.push_back({&element, platform::format(L"Function '%s' runs '%s', downloaded over http:// at line %d, with no "
                                            L"fileIsSigned check in between",
                                            function.c_str(), path.c_str(), download->second)});
}

}  // namespace engine
