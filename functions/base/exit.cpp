#include <cstdlib>

#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

bool FunctionExit::readAttributes() { return readInt(L"code", code_, engine::Need::Optional); }

void FunctionExit::execute() {
  engine::log(L"Exit function called with exitcode %d", code_);
  std::exit(code_);  // the runtime flushes and closes open streams, the trace file included
}

}  // namespace api::base
