// upkeep-faults.exe: the interpreter with system calls that fail on purpose,
// for script cases that test failure paths a healthy system never takes.
//   upkeep-faults.exe [--fail <call>:<nth>:<error>]... [--max-allocation <bytes>] <upkeep.exe arguments>
// From its nth call on, <call> (see platform/fault.h: write, flush, replace,
// copy, delete, trace, ...) fails with the Windows error code <error>:
//   upkeep-faults.exe --fail write:2:112 /file script.xml
// --max-allocation makes every larger allocation fail as when memory runs out.
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
  int i = 1;
  for (; i + 1 < argc; i += 2) {
    if (std::wcscmp(argv[i], L"--max-allocation") == 0) {
      maxAllocation = std::wcstoull(argv[i + 1], nullptr, 10);
    } else if (std::wcscmp(argv[i], L"--fail") == 0) {
      if (!platform::failCallFromText(platform::toUtf8(argv[i + 1]))) {
        std::fprintf(stderr, "upkeep-faults: not a fault: %ls\n", argv[i + 1]);
        return 99;
      }
    } else {
      break;
    }
  }
  rest.insert(rest.end(), argv + i, argv + argc);
  engine::FunctionRegistry registry = api::makeFunctionRegistry();
  registry.add(engine::tag<FunctionHandleCount>(L"handleCount"));
  return engine::runProgram(static_cast<int>(rest.size()), rest.data(), registry);
}
