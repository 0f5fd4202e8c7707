#include <string>

#include "engine/log.h"
#include "functions/processes/functions.h"
#include "platform/errors.h"
#include "platform/library.h"
#include "platform/text.h"

namespace api::processes {

const Parameters& FunctionProcessEntrypoint::parameters() {
  static const Parameters list = {
      engine::text<&FunctionProcessEntrypoint::path_>(L"path", Need::NonEmpty),
      engine::text<&FunctionProcessEntrypoint::entryPoint_>(L"entrypoint", Need::NonEmpty),
      engine::text<&FunctionProcessEntrypoint::text_>(L"dllTextArgument", Need::Optional),
      engine::integer<&FunctionProcessEntrypoint::integer_>(L"dllIntArgument", Need::Optional, L"0")};
  return list;
}

// Calls `uint32_t entrypoint(int32_t, const wchar_t*)` in the library; its
// result is the error code. An export that crashes is reported as 31 and the
// script goes on. Its lines say "ProcessEntrypoint", as scripts expect.
void FunctionProcessEntrypoint::execute() {
  clearResult();
  const std::wstring text = expand(text_), path = expand(path_);
  // Exports have narrow names.
  const std::string entryPoint = platform::toAnsi(expand(entryPoint_));
  engine::log(L"ProcessEntrypoint function from DLL %s. function:'%hs', with arguments: '%s;%d'", path.c_str(),
              entryPoint.c_str(), text.c_str(), integer_);
  platform::ExportCall call = platform::callExport(path, entryPoint, integer_, text);
  if (call.crashed) {
    engine::log(L"ProcessEntrypoint DLL %s crashed in function '%hs' with arguments '%s;%d'", path.c_str(),
                entryPoint.c_str(), text.c_str(), integer_);
    call.code = platform::kErrorGenFailure;
  }
  end(call.code, L"ProcessEntrypoint");
}

const engine::TagDoc FunctionProcessEntrypoint::doc{
    L"Loads the DLL `path`, calls its export `entrypoint`, declared `extern \"C\" __declspec(dllexport) uint32_t name(int32_t number, const wchar_t* text)`, with `dllIntArgument` (default `0`, read when the script is prepared) and `dllTextArgument`, and unloads it again; the texts are expanded when it runs. A full `path` is loaded as it is, and the libraries the DLL needs come from its own folder and the system folder; a `path` that is not a full path is first looked for as Windows looks for files (the program's folder, the current directory, the system folders, `PATH`), which lets anyone who can write to one of those plant a DLL of that name, so give a full path (`upkeep-check` warns). The call runs on a thread of its own as the same user, so an export that crashes is logged and fails with `31` while the script goes on; nothing guards against an export that calls `exit()` or never returns. Its lines begin with `ProcessEntrypoint`, capital P.",
    L"ProcessEntrypoint function from DLL %s. function:'%hs', with arguments: '%s;%d'\nProcessEntrypoint DLL %s crashed in function '%hs' with arguments '%s;%d'\nProcessEntrypoint function end with %s. err:'%s'",
    L"Error text: the export's return value when it is not 0 (`258` reads `timeout`), `126` a DLL that cannot be found or loaded, `127` no such export (export names are ASCII), `31` the export crashed.",
    L"<processEntrypoint path=\"C:\\Program Files\\App\\app.dll\" entrypoint=\"Register\" dllTextArgument=\"C:\\Program Files\\App\" dllIntArgument=\"1\">\n  <onerror><trace value=\"Register failed: %error%\"/></onerror>\n</processEntrypoint>"};

}  // namespace api::processes
