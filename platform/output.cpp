#include "platform/output.h"

#include <windows.h>

#include <cstdio>

namespace platform {
namespace {

LONG WINAPI flushBeforeCrash(EXCEPTION_POINTERS*) {
  std::fflush(stdout);
  return EXCEPTION_CONTINUE_SEARCH;
}

struct StdoutSetup {
  StdoutSetup() {
    std::setvbuf(stdout, nullptr, _IOFBF, 1 << 16);
    SetUnhandledExceptionFilter(flushBeforeCrash);
  }
};

}  // namespace

void writeOutput(std::string_view bytes) {
  static StdoutSetup setup;
  std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

void flushOutput() { std::fflush(stdout); }

void debugOutput(const std::wstring& text) { OutputDebugStringW(text.c_str()); }

}  // namespace platform
