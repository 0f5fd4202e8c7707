// upkeep.exe: runs a maintenance script (see README.md).
#include "engine/startup.h"
#include "functions/families.h"
#include "platform/system_library.h"

int wmain(int argc, wchar_t** argv) {
  platform::restrictLibrarySearch();
  return engine::runProgram(argc, argv, api::makeFunctionRegistry);
}
