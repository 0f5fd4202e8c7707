// upkeep-check.exe SCRIPT [/encfile] [/var name value]*: prepares a script as
// the interpreter does, runs nothing, and prints every problem as
// "file:line:column: error|warning: text". Exit 0: nothing to report; 1:
// warnings only; 2: errors. `/schema` and `/reference` print the schema and
// the function reference made from the description of every tag.
#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <string>
#include <vector>

#include <tinyxml.h>

#include "engine/ascii.h"
#include "engine/check.h"
#include "engine/describe.h"
#include "engine/script_file.h"
#include "functions/families.h"
#include "platform/error_text.h"
#include "platform/read_file.h"
#include "platform/system_library.h"
#include "platform/text.h"

namespace {

constexpr int kClean = 0, kWarnings = 1, kErrors = 2;

struct Arguments {
  std::wstring script;
  bool decrypt = false;
  engine::Presets presets;
};

void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void printLine(const std::wstring& line) { print(platform::toUtf8(line) + "\n"); }

void printUsage() {
  print(
      "Usage: upkeep-check.exe <xmlpath> [/encfile] [/var key value]*\n"
      "       upkeep-check.exe [/file | /encfile] <xmlpath> [/var key value]*\n"
      "       upkeep-check.exe /schema | /reference\n"
      "Checks a script without running it and prints each problem as file:line:column: error|warning: text.\n"
      "Exit code 0: no problems; 1: warnings only; 2: errors.\n");
}

bool asksForHelp(const wchar_t* arg) {
  for (const wchar_t* key : {L"/?", L"-?", L"/h", L"-h", L"--help", L"/help"})
    if (engine::equalsIgnoreAsciiCase(arg, key)) return true;
  return false;
}

// Takes the interpreter's command line too: /file PATH, /encfile PATH, /debug,
// /whatif, /jsonlog PATH.
bool parseArguments(int argc, wchar_t** argv, Arguments& out) {
  const auto isKey = [](const wchar_t* arg, const wchar_t* key) {
    return (*arg == L'/' || *arg == L'-') && engine::equalsIgnoreAsciiCase(arg + 1, key);
  };
  for (int i = 1; i < argc; ++i) {
    const wchar_t* arg = argv[i];
    if (isKey(arg, L"file") || isKey(arg, L"encfile")) {
      out.decrypt = out.decrypt || isKey(arg, L"encfile");
      // "/encfile" after the path is a switch of its own.
      if (out.script.empty() && i + 1 < argc) out.script = argv[++i];
    } else if (isKey(arg, L"var")) {
      if (i + 1 >= argc) return false;
      out.presets[argv[i + 1]] = i + 2 < argc ? argv[i + 2] : L"";
      i += 2;
    } else if (isKey(arg, L"debug") || isKey(arg, L"whatif")) {
      continue;
    } else if (isKey(arg, L"jsonlog")) {
      if (++i >= argc) return false;
    } else if (out.script.empty()) {
      // Anything but a known switch is the script, so a path may start with '/'.
      out.script = arg;
    } else {
      return false;
    }
  }
  return !out.script.empty();
}

// Loads the script as the interpreter does; on failure, reports why and
// returns false.
bool load(const Arguments& args, TiXmlDocument& document) {
  std::vector<unsigned char> bytes;
  platform::TerminatedFile file;
  if (const uint32_t error =
          args.decrypt ? platform::readWholeFile(args.script, bytes) : platform::readTerminated(args.script, file)) {
    printLine(args.script + L": error: " +
              (error == 1006 ? L"the file is empty" : L"cannot read the file: " + platform::errorText(error)));
    return false;
  }
  // Columns count characters, a tab as one.
  document.SetTabSize(1);
  const bool parsed = args.decrypt ? engine::parseScript(bytes, engine::decryptScript(bytes), document)
                                   : engine::parseScript(file.text(), document);
  if (parsed) return true;
  if (!document.Error() || document.ErrorId() == TiXmlBase::TIXML_ERROR_DOCUMENT_EMPTY) {
    printLine(args.script + L": error: the script holds no XML element" +
              (args.decrypt ? L"" : L" (an encrypted script needs /encfile)"));
    return false;
  }
  const std::wstring where = args.script + L":" + std::to_wstring(document.ErrorRow()) + L":" +
                             std::to_wstring(document.ErrorCol()) + L": error: ";
  printLine(where + L"the script is not well-formed XML: " + platform::fromUtf8(document.ErrorDesc()));
  return false;
}

int check(const Arguments& args) {
  // Left to the end of the process, which gives its memory back at once.
  TiXmlDocument& document = *new TiXmlDocument;
  if (!load(args, document)) {
    printLine(args.script + L": 1 error, 0 warnings");
    return kErrors;
  }
  const engine::FunctionRegistry registry = api::makeFunctionRegistry();
  size_t errors = 0, warnings = 0;
  const std::string script = platform::toUtf8(args.script);
  std::string report;  // printed at once: a script may have thousands of findings
  for (const engine::Finding& f : engine::checkScript(document, registry, args.presets)) {
    const bool error = f.severity == engine::Severity::Error;
    ++(error ? errors : warnings);
    report += script;
    if (f.line > 0) report += ":" + std::to_string(f.line) + ":" + std::to_string(f.column);
    report += error ? ": error: " : ": warning: ";
    platform::appendUtf8(f.text, report);
    report += '\n';
  }
  print(report);
  if (errors + warnings == 0) {
    printLine(args.script + L": no problems found");
    return kClean;
  }
  printLine(args.script + L": " + std::to_wstring(errors) + (errors == 1 ? L" error, " : L" errors, ") +
            std::to_wstring(warnings) + (warnings == 1 ? L" warning" : L" warnings"));
  return errors ? kErrors : kWarnings;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  platform::restrictLibrarySearch();
  if (argc == 2 && (engine::equalsIgnoreAsciiCase(argv[1], L"/schema") ||
                    engine::equalsIgnoreAsciiCase(argv[1], L"/reference"))) {
    // Generated files keep LF line ends wherever they are made.
    _setmode(_fileno(stdout), _O_BINARY);
    const engine::FunctionRegistry registry = api::makeFunctionRegistry();
    print(engine::equalsIgnoreAsciiCase(argv[1], L"/schema") ? engine::schemaText(registry)
                                                             : engine::referenceText(registry));
    return kClean;
  }
  if (argc == 2 && asksForHelp(argv[1])) {
    printUsage();
    return kClean;
  }
  Arguments args;
  if (!parseArguments(argc, argv, args)) {
    printUsage();
    return kErrors;
  }
  const int result = check(args);
  std::fflush(stdout);
  return result;
}
