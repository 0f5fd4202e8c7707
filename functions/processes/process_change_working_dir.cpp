#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/processes/functions.h"
#include "platform/processes.h"

namespace api::processes {

namespace {

constexpr engine::LogLine kStart{L"processChangeWorkingDir function called for new working dir '%s'"};

}  // namespace

const Parameters& FunctionProcessChangeWorkingDir::parameters() {
  static const Parameters list = {engine::text<&FunctionProcessChangeWorkingDir::to_>(L"to", Need::NonEmpty)};
  return list;
}

// Changes the interpreter's own working directory, so relative paths in later
// functions resolve against it; `currentdir` follows, ending in "\".
void FunctionProcessChangeWorkingDir::execute() {
  clearResult();
  std::wstring directory = expand(to_);
  if (directory.empty() || directory.back() != L'\\') directory.push_back(L'\\');
  engine::log(kStart, directory.c_str());
  // The long-path prefix lets the directory exceed 260 characters.
  const uint32_t error = platform::setCurrentDirectory(L"\\\\?\\" + directory);
  if (error == 0) variables().set(L"currentdir", directory);
  endWith(error);
}

const engine::TagDoc FunctionProcessChangeWorkingDir::doc{
    L"Changes the interpreter's working directory to `to`, a full path expanded when it runs (it may be longer than 260 characters), and on success sets `currentdir` to it, ending in `\\`. Relative paths in later functions resolve there.",
    {kStart, engine::kErrorEnd.as(L"processChangeWorkingDir")},
    L"Error text: `2` a missing directory (`3` when more than its last part is missing), `123` a file, `5` access denied, or another Windows code.",
    L"<processChangeWorkingDir to=\"C:\\Program Files\\App\"/>\n<processRun path=\"%currentdir%app.exe\" args=\"/register\" waittime=\"60000\"/>"};

}  // namespace api::processes
