#include "platform/output.h"

#include <windows.h>

#include <cstdio>

#include "platform/owned.h"

namespace platform {
namespace {

constexpr DWORD kFlushInterval = 100;  // milliseconds

LONG WINAPI flushBeforeCrash(EXCEPTION_POINTERS*) {
  std::fflush(stdout);
  return EXCEPTION_CONTINUE_SEARCH;
}

// Standard output is buffered, so a busy script does not pay for a write per
// line; a thread of its own empties the buffer every 100 ms, so a run that is
// killed (by a scheduler, say) loses at most the lines of its last 100 ms.
// The C runtime locks the stream for each call, so the two threads never
// interleave inside a line.
class StdoutSetup {
 public:
  StdoutSetup() {
    std::setvbuf(stdout, nullptr, _IOFBF, 1 << 16);
    SetUnhandledExceptionFilter(flushBeforeCrash);
    stop_.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (stop_) thread_.reset(CreateThread(nullptr, 64 * 1024, flushEvery, this, STACK_SIZE_PARAM_IS_A_RESERVATION,
                                          nullptr));
  }
  // Runs at exit, before the runtime's own last flush: the thread is gone by then.
  ~StdoutSetup() {
    if (!thread_) return;
    SetEvent(stop_.get());
    WaitForSingleObject(thread_.get(), INFINITE);
  }
  StdoutSetup(const StdoutSetup&) = delete;
  StdoutSetup& operator=(const StdoutSetup&) = delete;

 private:
  static DWORD WINAPI flushEvery(void* self) {
    const HANDLE stop = static_cast<StdoutSetup*>(self)->stop_.get();
    while (WaitForSingleObject(stop, kFlushInterval) == WAIT_TIMEOUT) std::fflush(stdout);
    return 0;
  }

  UniqueHandle stop_;
  UniqueThread thread_;
};

}  // namespace

void writeOutput(std::string_view bytes) {
  static StdoutSetup setup;
  std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

void flushOutput() { std::fflush(stdout); }

void debugOutput(const std::wstring& text) { OutputDebugStringW(text.c_str()); }

}  // namespace platform
