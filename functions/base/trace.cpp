#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

bool FunctionTrace::readAttributes() { return readText(L"value", value_, engine::Need::Optional); }

void FunctionTrace::execute() { engine::log(L"Trace: %s", expand(value_).c_str()); }

}  // namespace api::base
