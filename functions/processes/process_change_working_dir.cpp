#include "engine/log.h"
#include "functions/processes/functions.h"
#include "platform/processes.h"

namespace api::processes {

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
  engine::log(L"processChangeWorkingDir function called for new working dir '%s'", directory.c_str());
  // The long-path prefix lets the directory exceed 260 characters.
  const uint32_t error = platform::setCurrentDirectory(L"\\\\?\\" + directory);
  if (error == 0) variables().set(L"currentdir", directory);
  end(error);
}

}  // namespace api::processes
