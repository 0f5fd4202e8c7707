#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/files/functions.h"
#include "platform/file_system.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"fileExists function called for %s"};

}  // namespace

// An existing directory is no file.
void FunctionFileExists::execute() {
  const std::wstring path = expand(path_);
  engine::log(kStart, path.c_str());
  finish(platform::pathExists(path) && !platform::isDirectory(path));
}

const engine::TagDoc FunctionFileExists::doc{
    L"Tells whether `path`, expanded when it runs, names an existing file; a directory is no file. It never fails: whatever cannot be read counts as no file.",
    {kStart, engine::kBoolEnd.as(L"fileExists")},
    L"True: the file exists. False: nothing is there, or it is a directory.",
    L"<fileExists path=\"C:\\Program Files\\App\\app.exe\">\n  <onFalse><trace value=\"App is not installed\"/><exit code=\"0\"/></onFalse>\n</fileExists>"};

}  // namespace api::files
