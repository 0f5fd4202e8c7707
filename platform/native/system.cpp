// The system calls of the engine's pure parts, for the native build: output
// goes to standard output, the environment and the current directory are the
// process's own, and nothing is written to disk (a trace file or a record file cannot be opened).
#include <unistd.h>

#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sys/stat.h>
#include <thread>

#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/output.h"
#include "platform/text.h"
#include "platform/line_file.h"
#include "platform/trace_file.h"

namespace platform {
namespace {

constexpr uint32_t kAccessDenied = 5;

}  // namespace

void writeOutput(std::string_view bytes) { std::fwrite(bytes.data(), 1, bytes.size(), stdout); }

void flushOutput() { std::fflush(stdout); }

void debugOutput(const std::wstring&) {}

uint32_t TraceFile::open(const std::wstring&) {
  file_.reset();
  return kAccessDenied;
}

uint32_t TraceFile::writeLine(const wchar_t*) { return kAccessDenied; }

uint32_t LineFile::open(const std::wstring&) {
  file_.reset();
  return kAccessDenied;
}

uint32_t LineFile::writeLine(std::string_view) { return kAccessDenied; }

std::optional<std::vector<std::wstring>> environmentNames() {
  std::vector<std::wstring> names;
  for (char** entry = environ; *entry; ++entry) {
    const char* equals = std::strchr(*entry + 1, '=');
    names.push_back(fromUtf8(equals ? std::string_view(*entry, equals - *entry) : std::string_view(*entry)));
  }
  return names;
}

// %name% references resolved from the process environment; unknown names and
// a lone % stay as written, as ExpandEnvironmentStringsW leaves them.
std::optional<std::wstring> expandEnvironment(const std::wstring& text) {
  std::wstring out;
  size_t pos = 0;
  for (;;) {
    const size_t open = text.find(L'%', pos);
    const size_t close = open == std::wstring::npos ? open : text.find(L'%', open + 1);
    if (close == std::wstring::npos) return out.append(text, pos);
    out.append(text, pos, open - pos);
    const char* value = std::getenv(toUtf8(std::wstring_view(text).substr(open + 1, close - open - 1)).c_str());
    if (value && close > open + 1) {
      out += fromUtf8(value);
      pos = close + 1;
    } else {
      out.append(text, open, close - open);
      pos = close;
    }
  }
}

// Linux has no short names: a path is its own long form.
std::optional<std::wstring> longPathName(const std::wstring& path) { return path; }

bool pathExists(const std::wstring& path) {
  struct stat info;
  return ::stat(toUtf8(path).c_str(), &info) == 0;
}

std::wstring modulePath() {
  char path[PATH_MAX];
  const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path - 1);
  return length > 0 ? fromUtf8(std::string_view(path, static_cast<size_t>(length))) : std::wstring();
}

std::wstring currentDirectory() {
  char path[PATH_MAX];
  return ::getcwd(path, sizeof path) ? fromUtf8(path) : std::wstring();
}

uint32_t processId() { return static_cast<uint32_t>(::getpid()); }

OsVersion osVersion() { return OsVersion{}; }

uint32_t tickCount() {
  using namespace std::chrono;
  return static_cast<uint32_t>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

void sleep(uint32_t milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

uint32_t randomNumber() {
  static std::random_device device;
  return device() + tickCount() + static_cast<uint32_t>(::getpid());
}

}  // namespace platform
