#include "engine/log_lines.h"
#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionGoTo::parameters() {
  static const Parameters list = {engine::label<&FunctionGoTo::target_>(L"target")};
  return list;
}

const engine::TagDoc FunctionGoTo::doc{
    L"Jumps to the function whose `id` is `target`, taken as written; a label that does not exist refuses the script before it runs. An empty `target` ends the script (exit code 0). The execution loop makes the jump and logs it.",
    {engine::kGoTo},
    L"No result: a plain function has no handlers.",
    L"<fileExists path=\"C:\\Program Files\\App\\app.exe\"><onTrue><goto target=\"installed\"/></onTrue></fileExists>\n<trace value=\"App is not installed\"/>\n<nothing id=\"installed\"/>"};

}  // namespace api::base
