// upkeep-faults.exe: the interpreter with system calls that fail on purpose,
// for script cases that test failure paths a healthy system never takes.
//   upkeep-faults.exe [--fail <call>:<nth>:<error>]... [--max-allocation <bytes>] [--count-calls]
//                     <upkeep.exe arguments>
// From its nth call on, <call> (a kind of platform/fault.h: write, read,
// regopen, svcstart, ...) fails with the Windows error code <error>:
//   upkeep-faults.exe --fail write:2:112 /file script.xml
// An unknown call, or a fault not written <call>:<nth>:<error> with nth and
// error above 0, is refused before anything runs: a line on standard error
// that names the known calls, and exit code 99.
// --max-allocation makes every larger allocation fail as when memory runs out.
// --count-calls prints, on standard output after everything the run wrote
// there (also when the script ends with <exit>), one line per kind with the
// calls the seam was asked about: "calls: write 12".
// Scripts also get one more function, <handleCount var="name"/>, which stores
// the number of handles the process holds.
#include <windows.h>
#include <winternl.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <new>
#include <string>
#include <vector>

#include "engine/log.h"
#include "engine/startup.h"
#include "functions/families.h"
#include "platform/fault.h"
#include "platform/text.h"
#include "platform/system_library.h"

namespace {

size_t maxAllocation = 0;  // 0: no limit
constexpr int kRefused = 99;

void printCallCounts() {
  for (size_t i = 0; i < static_cast<size_t>(platform::Call::Count); ++i) {
    const auto call = static_cast<platform::Call>(i);
    const std::string name(platform::callName(call));
    std::fprintf(stdout, "calls: %s %u\n", name.c_str(), platform::callCount(call));
  }
  std::fflush(stdout);
}

// Arms the fault, or says why it cannot and which calls there are.
bool armFault(const std::wstring& spec) {
  const std::string text = platform::toUtf8(spec);
  if (platform::failCallFromText(text)) return true;
  const std::string name = text.substr(0, text.find(':'));
  if (platform::callNamed(name))
    std::fprintf(stderr, "upkeep-faults: not a fault: %s (write <call>:<nth>:<error>, nth and error above 0)\n",
                 text.c_str());
  else
    std::fprintf(stderr, "upkeep-faults: unknown call '%s' in --fail %s\n", name.c_str(), text.c_str());
  std::string known;
  for (size_t i = 0; i < static_cast<size_t>(platform::Call::Count); ++i)
    known.append(" ").append(platform::callName(static_cast<platform::Call>(i)));
  std::fprintf(stderr, "known calls:%s\n", known.c_str());
  return false;
}

// The handles this process holds, from the system's handle list (Wine has no
// GetProcessHandleCount). 0 when the list cannot be had.
unsigned processHandleCount() {
  struct Entry {
    void* object;
    ULONG_PTR processId;
    ULONG_PTR handle;
    ULONG access;
    USHORT creatorBackTraceIndex;
    USHORT typeIndex;
    ULONG attributes;
    ULONG reserved;
  };
  struct Table {
    ULONG_PTR count;
    ULONG_PTR reserved;
    Entry entries[1];
  };
  constexpr auto kSystemExtendedHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(64);
  constexpr NTSTATUS kInfoLengthMismatch = static_cast<NTSTATUS>(0xC0000004);
  std::vector<char> buffer(1 << 16);
  NTSTATUS status;
  while ((status = NtQuerySystemInformation(kSystemExtendedHandleInformation, buffer.data(),
                                            static_cast<ULONG>(buffer.size()), nullptr)) == kInfoLengthMismatch)
    buffer.resize(buffer.size() * 2);
  if (status != 0) return 0;
  const auto* table = reinterpret_cast<const Table*>(buffer.data());
  unsigned count = 0;
  for (ULONG_PTR i = 0; i < table->count; ++i)
    if (table->entries[i].processId == GetCurrentProcessId()) ++count;
  return count;
}

class FunctionHandleCount final : public engine::FunctionBase {
 public:
  static const engine::Parameters& parameters() {
    static const engine::Parameters list = {
        engine::variable<&FunctionHandleCount::var_>(L"var", engine::Need::NonEmpty)};
    return list;
  }
  void execute() override {
    const unsigned count = processHandleCount();
    engine::log(L"handleCount %u", count);
    variables().set(var_, std::to_wstring(count));
  }

 private:
  std::wstring var_;
};

}  // namespace

void* operator new(size_t size) {
  if (maxAllocation && size > maxAllocation) throw std::bad_alloc();
  if (void* block = std::malloc(size ? size : 1)) return block;
  throw std::bad_alloc();
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, size_t) noexcept { std::free(block); }

int wmain(int argc, wchar_t** argv) {
  platform::restrictLibrarySearch();
  std::vector<wchar_t*> rest{argv[0]};
  bool countCalls = false;
  size_t limit = 0;
  int i = 1;
  for (; i < argc; ++i) {
    if (std::wcscmp(argv[i], L"--count-calls") == 0) {
      countCalls = true;
    } else if (std::wcscmp(argv[i], L"--fail") == 0) {
      if (!armFault(i + 1 < argc ? argv[++i] : L"")) return kRefused;
    } else if (std::wcscmp(argv[i], L"--max-allocation") == 0 && i + 1 < argc) {
      limit = std::wcstoull(argv[++i], nullptr, 10);
    } else {
      break;
    }
  }
  // Runs after the run's own output, whichever way the run ends.
  if (countCalls) std::atexit(printCallCounts);
  rest.insert(rest.end(), argv + i, argv + argc);
  maxAllocation = limit;  // from here on: the run's own allocations
  const auto makeRegistry = [] {
    engine::FunctionRegistry registry = api::makeFunctionRegistry();
    registry.add(engine::tag<FunctionHandleCount>(L"handleCount"));
    return registry;
  };
  return engine::runProgram(static_cast<int>(rest.size()), rest.data(), makeRegistry);
}
