#include "engine/startup.h"

#include <cwchar>
#include <new>
#include <string_view>
#include <vector>

#include <tinyxml.h>

#include "engine/ascii.h"
#include "engine/blowfish.h"
#include "engine/engine.h"
#include "engine/log.h"
#include "engine/log_lines.h"
#include "engine/run_record.h"
#include "engine/script_file.h"
#include "engine/what_if.h"
#include "platform/environment.h"
#include "platform/output.h"
#include "platform/output_file.h"
#include "platform/privileges.h"
#include "platform/read_file.h"

namespace engine {
namespace {

void enablePrivileges() {
  platform::enablePrivileges({L"SeLoadDriverPrivilege", L"SeDebugPrivilege", L"SeManageVolumePrivilege",
                              L"SeProfileSingleProcessPrivilege", L"SeSecurityPrivilege", L"SeShutdownPrivilege",
                              L"SeSystemProfilePrivilege", L"SeImpersonatePrivilege", L"SeIncreaseQuotaPrivilege",
                              L"SeAssignPrimaryTokenPrivilege"});
}

// The usage texts, and the argument errors, end in "\n" and so leave a blank
// line: the program's established output, which scripts and log readers match.
void logUsage(const std::wstring& error, const wchar_t* program) {
  if (!error.empty()) log(L"%s\n", error.c_str());
  log(L"Usage:\n%s [/file | /encfile] <xmlpath> [/debug] [/var key value]*\n", program);
}

int encryptInPlace(const std::wstring& path) {
  log(L"Encrypting");
  std::vector<unsigned char> bytes;
  if (uint32_t error = platform::readWholeFile(path, bytes)) {
    log(L"Error reading file '%s': %d", path.c_str(), error);
    return static_cast<int>(error);
  }
  std::vector<unsigned char> cipher(class_blowfish::paddedLength(bytes.size()));
  class_blowfish blowfish;
  blowfish.initialize(class_blowfish::kProgramKey, 0);
  blowfish.encrypt(bytes.data(), cipher.data(), bytes.size());
  // The ciphertext replaces the script only once it is whole on the disk.
  const uint32_t error =
      platform::replaceFile(path, std::string_view(reinterpret_cast<const char*>(cipher.data()), cipher.size()));
  // "writting" is the program's established wording, which scripts and log readers match.
  if (error) log(L"Error writting file '%s': %d", path.c_str(), error);
  log(L"End");
  return static_cast<int>(error);
}

// Loads the script into `document`; returns 0 or the exit code of the failure.
// The "\n" that ends each load failure's text leaves a blank line after it:
// the program's established output, which scripts and log readers match.
int loadScript(const CommandLine& args, TiXmlDocument& document) {
  const std::wstring path = args.scriptPath;
  if (!args.decrypt) {
    log(kLoadingXml);
    platform::TerminatedFile file;
    const uint32_t error = platform::readTerminated(path, file);
    if (error || !parseScript(file.text(), document)) {
      log(L"Cannot load xml file '%s'\n", path.c_str());
      return -3;
    }
    return 0;
  }
  log(L"Decrypting");
  std::vector<unsigned char> bytes;
  if (uint32_t error = platform::readWholeFile(path, bytes)) {
    log(L"Error reading file '%s': %d", path.c_str(), error);
    return static_cast<int>(error);
  }
  const size_t length = decryptScript(bytes);
  log(L"Loading decrypted xml");
  if (!parseScript(bytes, length, document)) {
    log(L"Cannot parse xml file from '%s'\n", path.c_str());
    return -3;
  }
  return 0;
}

}  // namespace

bool parseCommandLine(int argc, wchar_t** argv, CommandLine& out, std::wstring& error) {
  const auto missingValue = [&] {
    error = std::wstring(L"Argument key '") + argv[argc - 1] + L"' does not have the required value\n";
    return false;
  };
  for (int i = 1; i < argc; ++i) {
    const wchar_t* key = argv[i];
    if (*key == L'-' || *key == L'/') ++key;
    if (equalsIgnoreAsciiCase(key, L"file") || equalsIgnoreAsciiCase(key, L"encfile") ||
        equalsIgnoreAsciiCase(key, L"encrypt")) {
      if (i + 1 >= argc) return missingValue();
      out.scriptPath = argv[++i];
      if (equalsIgnoreAsciiCase(key, L"encfile")) out.decrypt = true;
      if (equalsIgnoreAsciiCase(key, L"encrypt")) out.encrypt = true;
    } else if (equalsIgnoreAsciiCase(key, L"debug")) {
      out.debug = true;
    } else if (equalsIgnoreAsciiCase(key, L"whatif")) {
      out.whatIf = true;
    } else if (equalsIgnoreAsciiCase(key, L"jsonlog")) {
      if (i + 1 >= argc) return missingValue();
      out.jsonLog = argv[++i];
    } else if (equalsIgnoreAsciiCase(key, L"var")) {
      // `/var name` at the very end is accepted with an empty value.
      if (i + 1 >= argc) return missingValue();
      out.presets[argv[i + 1]] = i + 2 < argc ? argv[i + 2] : L"";
      i += 2;
    } else {
      error = std::wstring(L"Unknown argument key: '") + argv[i] + L"'\n";
      return false;
    }
  }
  return true;
}

bool checkScriptPath(const std::wstring& path, const std::wstring& program, std::wstring& error) {
  if (path.size() >= 2 && path[0] == L'\\' && path[1] == L'\\') return false;
  const bool hasParent = path.find(L"..") != std::wstring::npos;
  const wchar_t drive = asciiLower(path[0]);
  const bool absolute = path.size() >= 2 && drive >= L'a' && drive <= L'z' && path[1] == L':';
  if (!absolute) {
    if (hasParent) error = L"The XML path does not point to a valid location";
    return !hasParent;
  }
  const size_t slash = program.rfind(L'\\');
  if (slash == std::wstring::npos) {
    error = L"Could not get the current executable path";
    return false;
  }
  // A plain prefix match: a sibling whose name extends the directory's passes too.
  const std::wstring directory = program.substr(0, slash);
  if (hasParent || _wcsnicmp(path.c_str(), directory.c_str(), directory.size()) != 0) {
    error = L"The XML path does not point to a valid location";
    return false;
  }
  return true;
}

namespace {

// A record that cannot be opened is said once; the run goes on without it.
void startRunRecord(const CommandLine& args) {
  if (args.jsonLog.empty()) return;
  if (const uint32_t error = openRunRecord(args.jsonLog)) {
    log(kCannotOpenJsonLog, args.jsonLog.c_str(), error);
    return;
  }
  recordRunStart(args.scriptPath, args.whatIf);
}

int runUnguarded(int argc, wchar_t** argv, const FunctionRegistry& registry) {
  enablePrivileges();
  log(kStarted);
  CommandLine args;
  std::wstring error;
  const bool parsed = parseCommandLine(argc, argv, args, error);
  setDebugOutput(args.debug);
  if (!parsed) {
    logUsage(error, argv[0]);
    return -1;
  }
  log(kCommandLineParsed);
  if (!args.scriptPath)
    error = L"Argument pair '/file <xmlpath>' is missing";
  else if (!*args.scriptPath)
    error = L"The XML path is empty";
  if (!error.empty() || (!args.encrypt && !checkScriptPath(args.scriptPath, platform::modulePath(), error))) {
    logUsage(error, argv[0]);
    return -2;
  }
  if (args.whatIf) beginWhatIf();
  if (args.encrypt) return encryptInPlace(args.scriptPath);
  startRunRecord(args);

  // The document is left to the end of the process, which gives its memory back
  // at once: freeing it node by node costs a good part of what parsing it did.
  // The engine stays on the stack, so that a run ended by an exception still
  // releases the handles it holds (text files, documents) as it unwinds.
  TiXmlDocument& document = *new TiXmlDocument;
  Engine engine(registry);
  int result = loadScript(args, document);
  if (result == 0) {
    log(kPrepare);
    if (engine.prepare(document, args.presets)) {
      log(kExecute);
      log(kStartExecuting);
      engine.run();
      log(kStopExecuting);
      summarizeWhatIf();
      log(kEnd);
    } else {
      result = -4;
    }
  }
  engine.reset();
  recordRunEnd(result);
  return result;
}

}  // namespace

int runProgram(int argc, wchar_t** argv, FunctionRegistry (*makeRegistry)()) {
  try {
    const FunctionRegistry registry = makeRegistry();
    return runUnguarded(argc, argv, registry);
  } catch (const std::bad_alloc&) {
    logOutOfMemory();
    platform::flushOutput();
    try {
      recordRunEnd(kOutOfMemoryExitCode);
    } catch (const std::bad_alloc&) {  // the JSON log goes without its end line
    }
    return kOutOfMemoryExitCode;
  }
}

}  // namespace engine
