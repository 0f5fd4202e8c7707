#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

namespace {

constexpr engine::LogLine kStart{L"Executing 'nothing' function"};

}  // namespace

void FunctionNothing::execute() { engine::log(kStart); }

const engine::TagDoc FunctionNothing::doc{
    L"Does nothing but log a line: the usual carrier of a label (`id`) for `goto` and `onErrorGoTo`.",
    {kStart},
    L"No result: a plain function has no handlers.",
    L"<goto target=\"done\"/>\n<trace value=\"skipped\"/>\n<nothing id=\"done\"/>"};

}  // namespace api::base
