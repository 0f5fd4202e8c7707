#include "functions/families.h"
#include "functions/files/functions.h"

namespace api::files {

using engine::tag;

void registerFunctions(engine::FunctionRegistry& r) {
  static const engine::Tag tags[] = {
      tag<FunctionDirExists>(L"dirExists"),
      tag<FunctionFileExists>(L"fileExists"),
      tag<FunctionFileIsSigned>(L"fileIsSigned"),
      tag<FunctionDirCreate>(L"dirCreate"),
      tag<FunctionDirCopyRecursive>(L"dirCopyRec"),
      tag<FunctionDirDeleteRecursive>(L"dirDeleteRec"),
      tag<FunctionFileFind, kFileFind>(L"fileFind"),
      tag<FunctionFileFind, kDirFind>(L"dirFind"),
      tag<FunctionFileCopySingle>(L"fileCopySingle"),
      // fileMove and dirMove are one behaviour: the source tells files and directories apart.
      tag<FunctionFileMoveSingle>(L"fileMove"),
      tag<FunctionFileMoveSingle>(L"dirMove"),
      tag<FunctionFileCopyPattern>(L"fileCopyPattern"),
      tag<FunctionFileDeletePattern>(L"fileDeletePattern"),
      tag<FunctionFileOpenOrCreate>(L"fileOpenOrCreate"),
      tag<FunctionCloseHandle, kFileClose>(L"fileClose"),
      tag<FunctionFileWrite>(L"fileWrite"),
      tag<FunctionFileDownload>(L"fileDownload"),
  };
  r.add(tags);
}

}  // namespace api::files
