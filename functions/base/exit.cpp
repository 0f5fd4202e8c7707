#include <cstdlib>

#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionExit::parameters() {
  static const Parameters list = {engine::integer<&FunctionExit::code_>(L"code", Need::Optional, L"0")};
  return list;
}

void FunctionExit::execute() {
  engine::log(L"Exit function called with exitcode %d", code_);
  std::exit(code_);  // the runtime flushes and closes open streams, the trace file included
}

}  // namespace api::base
