#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"Trace: %s"};

}  // namespace

const Parameters& FunctionTrace::parameters() {
  static const Parameters list = {engine::text<&FunctionTrace::value_>(L"value", Need::Optional)};
  return list;
}

void FunctionTrace::execute() { engine::log(kStart, expand(value_).c_str()); }

const engine::TagDoc FunctionTrace::doc{
    L"Logs `Trace: ` followed by `value`, expanded when it runs, to standard output, to the debugger output under `/debug` and to the trace file. Without `value` the line is `Trace: ` alone.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<trace value=\"Updating %enginedir% on %os% (%arch%)\"/>"};

}  // namespace api::base
