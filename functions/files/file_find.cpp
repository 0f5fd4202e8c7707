#include <vector>

#include "engine/log.h"
#include "functions/files/detail/delimited_list.h"
#include "functions/files/functions.h"
#include "platform/directory_listing.h"
#include "platform/errors.h"
#include "platform/path.h"

namespace api::files {
namespace {

struct Search {
  const std::wstring& pattern;
  int32_t maxDepth;
  bool directories;
  std::vector<std::wstring>& found;
};

// A directory's own matches first, then its child directories depth-first.
// Returns the error of a listing that could not start, 0 otherwise.
uint32_t searchDirectory(const Search& search, const std::wstring& directory, int32_t level) {
  if (level > search.maxDepth) return 0;
  platform::DirectoryListing matches(platform::joinPath(directory, search.pattern));
  const uint32_t error = matches.valid() ? 0 : matches.error();
  for (; matches.valid(); matches.next()) {
    if (matches.isDirectory() != search.directories || matches.isDots()) continue;
    search.found.push_back(platform::joinPath(directory, matches.name()));
  }
  if (level == search.maxDepth) return error;
  for (platform::DirectoryListing children(platform::joinPath(directory, L"*")); children.valid(); children.next()) {
    if (children.isDirectory() && !children.isDots())
      searchDirectory(search, platform::joinPath(directory, children.name()), level + 1);
  }
  return error;
}

}  // namespace

const Parameters& FunctionFileFind::searchParameters() {
  static const Parameters list = {engine::text<&FunctionFileFind::pattern_>(L"pattern", Need::NonEmpty),
                                  engine::variable<&FunctionFileFind::var_>(L"var", Need::NonEmpty),
                                  engine::literal<&FunctionFileFind::delim_>(L"delim", Need::NonEmpty),
                                  engine::integer<&FunctionFileFind::depth_>(L"depth", Need::Optional, L"0")};
  return list;
}

const Parameters& FunctionFileFind::parameters() {
  static const Parameters list =
      engine::joined({engine::text<&FunctionFileFind::root_>(L"dir", Need::NonEmpty)}, searchParameters());
  return list;
}

const Parameters& FunctionDirFind::parameters() {
  static const Parameters list =
      engine::joined({engine::text<&FunctionDirFind::root_>(L"rootDir", Need::NonEmpty)}, searchParameters());
  return list;
}

// The variable is always written, empty when nothing matched. Only a root
// that cannot be listed for another reason than "no match" is an error.
void FunctionFileFind::execute() {
  clearResult();
  const std::wstring root = expand(root_), pattern = expand(pattern_);
  const wchar_t* tag = name().c_str();
  engine::log(L"%s from '%s\\%s' (depth %d)", tag, root.c_str(), pattern.c_str(), depth_);
  std::vector<std::wstring> found;
  const uint32_t error = searchDirectory(Search{pattern, depth_, directories_, found}, root, 0);
  variables().set(var_, joinDelimited(found, delim_));
  if (error != 0 && error != platform::kErrorFileNotFound && error != platform::kErrorNoMoreFiles) fail(error);
  logEnd(tag);
}

const engine::TagDoc FunctionFileFind::doc{
    L"Stores in `var` the full paths of the files under `dir` whose names match the wildcard `pattern` (both expanded when it runs), each but the last followed by `delim` (taken as written). `depth` (default `0`: `dir` alone) is how many levels of subdirectories are searched too, read when the script is prepared; a directory's own matches come before those in its subdirectories. `var` is always written, empty when nothing matches.",
    L"fileFind from '%s\\%s' (depth %d)\nfileFind function end with %s. err:'%s'",
    L"Error text: the Windows code when `dir` cannot be listed, e.g. `3` it does not exist; no match is success, and a subdirectory that cannot be listed is passed over.",
    L"<fileFind dir=\"C:\\Program Files\\App\" pattern=\"*.dll\" var=\"dlls\" delim=\";\" depth=\"2\"/>\n<trace value=\"installed libraries: %dlls%\"/>"};

const engine::TagDoc FunctionDirFind::doc{
    L"Stores in `var` the full paths of the directories under `rootDir` whose names match the wildcard `pattern` (both expanded when it runs), each but the last followed by `delim` (taken as written). `depth` (default `0`: `rootDir` alone) is how many levels of subdirectories are searched too, read when the script is prepared; a directory's own matches come before those in its subdirectories. `var` is always written, empty when nothing matches.",
    L"dirFind from '%s\\%s' (depth %d)\ndirFind function end with %s. err:'%s'",
    L"Error text: the Windows code when `rootDir` cannot be listed, e.g. `3` it does not exist; no match is success, and a subdirectory that cannot be listed is passed over.",
    L"<dirFind rootDir=\"C:\\Program Files\\App\\plugins\" pattern=\"*\" var=\"plugins\" delim=\"|\"/>\n<trace value=\"plugins: %plugins%\"/>"};

}  // namespace api::files
