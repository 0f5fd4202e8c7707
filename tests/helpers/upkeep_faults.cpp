// upkeep-faults.exe: the interpreter with system calls that fail on purpose,
// for script cases that test failure paths a healthy disk never takes.
//   upkeep-faults.exe [--fail <call>:<nth>:<error>]... <upkeep.exe arguments>
// From its nth call on, <call> (see platform/fault.h: write, flush, replace,
// copy, delete, trace, ...) fails with the Windows error code <error>:
//   upkeep-faults.exe --fail write:2:112 /file script.xml
#include <cstdio>
#include <cwchar>
#include <vector>

#include "engine/startup.h"
#include "functions/families.h"
#include "platform/fault.h"
#include "platform/text.h"

int wmain(int argc, wchar_t** argv) {
  std::vector<wchar_t*> rest{argv[0]};
  int i = 1;
  for (; i + 1 < argc && std::wcscmp(argv[i], L"--fail") == 0; i += 2) {
    if (!platform::failCallFromText(platform::toUtf8(argv[i + 1]))) {
      std::fprintf(stderr, "upkeep-faults: not a fault: %ls\n", argv[i + 1]);
      return 99;
    }
  }
  rest.insert(rest.end(), argv + i, argv + argc);
  const engine::FunctionRegistry registry = api::makeFunctionRegistry();
  return engine::runProgram(static_cast<int>(rest.size()), rest.data(), registry);
}
