#include <vector>

#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/files/detail/delimited_list.h"
#include "functions/files/functions.h"
#include "platform/directory_listing.h"
#include "platform/errors.h"
#include "platform/path.h"

namespace api::files {
namespace {

// The start line; the leading %s is the tag.
constexpr engine::LogLine kStart{L"%s from '%s\\%s' (depth %d)"};

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

const engine::TagDoc kFileFindDoc{
    L"Stores in `var` the full paths of the files under `dir` whose names match the wildcard `pattern` (both expanded when it runs), each but the last followed by `delim` (taken as written). `depth` (default `0`: `dir` alone) is how many levels of subdirectories are searched too, read when the script is prepared; a directory's own matches come before those in its subdirectories. `var` is always written, empty when nothing matches.",
    {kStart.as(L"fileFind"), engine::kErrorEnd.as(L"fileFind")},
    L"Error text: the Windows code when `dir` cannot be listed, e.g. `3` it does not exist; no match is success, and a subdirectory that cannot be listed is passed over.",
    L"<fileFind dir=\"C:\\Program Files\\App\" pattern=\"*.dll\" var=\"dlls\" delim=\";\" depth=\"2\"/>\n<trace value=\"installed libraries: %dlls%\"/>"};

const engine::TagDoc kDirFindDoc{
    L"Stores in `var` the full paths of the directories under `rootDir` whose names match the wildcard `pattern` (both expanded when it runs), each but the last followed by `delim` (taken as written). `depth` (default `0`: `rootDir` alone) is how many levels of subdirectories are searched too, read when the script is prepared; a directory's own matches come before those in its subdirectories. `var` is always written, empty when nothing matches.",
    {kStart.as(L"dirFind"), engine::kErrorEnd.as(L"dirFind")},
    L"Error text: the Windows code when `rootDir` cannot be listed, e.g. `3` it does not exist; no match is success, and a subdirectory that cannot be listed is passed over.",
    L"<dirFind rootDir=\"C:\\Program Files\\App\\plugins\" pattern=\"*\" var=\"plugins\" delim=\"|\"/>\n<trace value=\"plugins: %plugins%\"/>"};

}  // namespace

const FunctionFileFind::Variant kFileFind{false, kFileFindDoc};
const FunctionFileFind::Variant kDirFind{true, kDirFindDoc};

const Parameters& FunctionFileFind::parameters(const Variant& variant) {
  using F = FunctionFileFind;
  const Parameters search = {engine::text<&F::pattern_>(L"pattern", Need::NonEmpty),
                             engine::variable<&F::var_>(L"var", Need::NonEmpty),
                             engine::literal<&F::delim_>(L"delim", Need::NonEmpty),
                             engine::integer<&F::depth_>(L"depth", Need::Optional, L"0")};
  static const Parameters files = engine::joined({engine::text<&F::root_>(L"dir", Need::NonEmpty)}, search);
  static const Parameters directories = engine::joined({engine::text<&F::root_>(L"rootDir", Need::NonEmpty)}, search);
  return variant.directories ? directories : files;
}

// The variable is always written, empty when nothing matched. Only a root
// that cannot be listed for another reason than "no match" is an error.
void FunctionFileFind::execute() {
  clearResult();
  const std::wstring root = expand(root_), pattern = expand(pattern_);
  const wchar_t* tag = name();
  engine::log(kStart, tag, root.c_str(), pattern.c_str(), depth_);
  std::vector<std::wstring> found;
  const uint32_t error = searchDirectory(Search{pattern, depth_, directories_, found}, root, 0);
  variables().set(var_, joinDelimited(found, delim_));
  if (error != 0 && error != platform::kErrorFileNotFound && error != platform::kErrorNoMoreFiles) fail(error);
  logEnd(tag);
}

}  // namespace api::files
