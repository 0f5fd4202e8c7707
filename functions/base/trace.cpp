#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionTrace::parameters() {
  static const Parameters list = {engine::text<&FunctionTrace::value_>(L"value", Need::Optional)};
  return list;
}

void FunctionTrace::execute() { engine::log(L"Trace: %s", expand(value_).c_str()); }

}  // namespace api::base
