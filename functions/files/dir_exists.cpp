#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/files/functions.h"
#include "platform/file_system.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"dirExists function called for %s"};

}  // namespace

void FunctionDirExists::execute() {
  const std::wstring path = expand(path_);
  engine::log(kStart, path.c_str());
  finish(platform::pathExists(path) && platform::isDirectory(path));
}

const engine::TagDoc FunctionDirExists::doc{
    L"Tells whether `path`, expanded when it runs, names an existing directory. It never fails: whatever cannot be read counts as no directory.",
    {kStart, engine::kBoolEnd.as(L"dirExists")},
    L"True: the directory exists. False: nothing is there, or it is a file.",
    L"<dirExists path=\"C:\\Program Files\\App\\logs\">\n  <onFalse><dirCreate path=\"C:\\Program Files\\App\\logs\"/></onFalse>\n</dirExists>"};

}  // namespace api::files
