#include "engine/log_lines.h"
#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionOnErrorGoTo::parameters() {
  static const Parameters list = {engine::label<&FunctionOnErrorGoTo::target_>(L"target")};
  return list;
}

// An empty target switches the global error target off.
void FunctionOnErrorGoTo::execute() { runtime().errorTarget = target_; }

const engine::TagDoc FunctionOnErrorGoTo::doc{
    L"Sets the script's error target: from then on an error function that fails without a matching `onerrorspec` or `onerror` handler jumps to the label `target` (which must exist in the script). An empty `target` turns it off. It logs nothing itself; each such jump logs the line below.",
    {engine::kEnterOnErrorGoTo},
    L"No result: a plain function has no handlers.",
    L"<onErrorGoTo target=\"failed\"/>\n<dirCreate path=\"C:\\Program Files\\App\\logs\"/>\n<exit code=\"0\"/>\n<trace id=\"failed\" value=\"update failed: %error%\"/>\n<exit code=\"1\"/>"};

}  // namespace api::base
