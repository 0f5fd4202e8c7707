#include "functions/base/functions.h"
#include "functions/families.h"

namespace api::base {

using engine::tag;

void registerFunctions(engine::FunctionRegistry& r) {
  static const engine::Tag tags[] = {
      tag<FunctionExit>(L"exit"),
      tag<FunctionTrace>(L"trace"),
      tag<FunctionTraceSetFile>(L"traceSetFile"),
      tag<FunctionSleep>(L"sleep"),
      tag<FunctionNothing>(L"nothing"),
      tag<FunctionGoTo>(L"goto"),
      tag<FunctionOnErrorGoTo>(L"onErrorGoTo"),
      tag<FunctionAssign>(L"assign"),
      tag<FunctionAssignToken>(L"assignToken"),
      tag<FunctionAddInt>(L"addInt"),
      tag<FunctionAddString>(L"addString"),
      tag<FunctionStringDelete>(L"stringDelete"),
      tag<FunctionStringGet>(L"stringGet"),
      tag<FunctionStringTrim>(L"stringTrim"),
      tag<FunctionTest>(L"test"),
  };
  r.add(tags);
}

}  // namespace api::base
