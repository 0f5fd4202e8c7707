#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/files/functions.h"
#include "platform/errors.h"
#include "platform/file_system.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"%s from '%s' to '%s'. FailIfExists: %d. After reboot:%d"};

}  // namespace

const Parameters& FunctionFileMoveSingle::parameters() {
  static const Parameters list = engine::joined({engine::flag<&FunctionFileMoveSingle::afterReboot_>(L"afterReboot")}, CopyFunction::parameters());
  return list;
}

// fileMove and dirMove: files and directories are told apart by the source
// itself, not by the tag.
void FunctionFileMoveSingle::execute() {
  clearResult();
  const std::wstring src = expand(src_), dest = expand(dest_);
  const wchar_t* tag = name();
  // "After reboot:" without a space is the program's established wording,
  // which scripts and log readers match.
  engine::log(kStart, tag, src.c_str(), dest.c_str(), failIfExists_, afterReboot_);
  const platform::PathState source = platform::inspectPath(src);
  if (source.error) {
    fail(source.error);
  } else if (source.kind == platform::PathKind::Missing) {
    fail(platform::kErrorNotFound);
  } else {
    const bool directory = source.kind == platform::PathKind::Directory;
    const bool sameRoot = platform::sameRoot(src, dest);
    if (directory && !sameRoot) {
      fail(platform::kErrorNotSameDevice);
    } else {
      using platform::MoveFlags;
      MoveFlags flags = afterReboot_ ? MoveFlags::AtRestart : MoveFlags::None;
      if (!directory && !afterReboot_ && !sameRoot) flags = flags | MoveFlags::AllowCopy;
      if (!directory && !failIfExists_) flags = flags | MoveFlags::ReplaceExisting;
      if (const uint32_t error = platform::moveFile(src, dest, flags)) fail(error);
    }
  }
  logEnd(tag);
}

const engine::TagDoc FunctionFileMoveSingle::doc{
    L"`fileMove` and `dirMove` are one function: each moves or renames `src` to `dest` (both expanded when it runs), whichever `src` is, and its log lines begin with the tag written. A file may go to another volume (not with `afterReboot`) and, with `failIfExists=\"false\"`, replaces an existing `dest` (default `true`: it fails); a directory must stay on its volume and never replaces anything. With `afterReboot=\"true\"` the move is only registered for the next restart, which needs administrator rights.",
    {kStart, engine::kErrorEnd},
    L"Error text: `1168` no `src`, the Windows code when what `src` is cannot be read, `17` a directory to another volume, or the Windows code of the move, e.g. `183` `dest` exists, `3` the directory of `dest` is missing, `5` access denied, `32` in use.",
    L"<fileMove src=\"C:\\Program Files\\App\\app.exe\" dest=\"C:\\Program Files\\App\\app.old\" failIfExists=\"false\"/>\n<dirMove src=\"C:\\Program Files\\App\\plugins\" dest=\"C:\\Program Files\\App\\plugins.old\"/>"};

}  // namespace api::files
