#include "functions/base/functions.h"
#include "functions/families.h"

namespace api::base {

using engine::create;

void registerFunctions(engine::FunctionRegistry& r) {
  r.registerPlain(L"exit", create<FunctionExit>);
  r.registerPlain(L"trace", create<FunctionTrace>);
  r.registerRetError(L"traceSetFile", create<FunctionTraceSetFile>);
  r.registerPlain(L"sleep", create<FunctionSleep>);
  r.registerPlain(L"nothing", create<FunctionNothing>);
  r.registerPlain(L"goto", create<FunctionGoTo>);
  r.registerPlain(L"onErrorGoTo", create<FunctionOnErrorGoTo>);
  r.registerPlain(L"assign", create<FunctionAssign>);
  r.registerPlain(L"assignToken", create<FunctionAssignToken>);
  r.registerPlain(L"addInt", create<FunctionAddInt>);
  r.registerPlain(L"addString", create<FunctionAddString>);
  r.registerPlain(L"stringDelete", create<FunctionStringDelete>);
  r.registerPlain(L"stringGet", create<FunctionStringGet>);
  r.registerPlain(L"stringTrim", create<FunctionStringTrim>);
  r.registerRetBool(L"test", create<FunctionTest>);
}

}  // namespace api::base
