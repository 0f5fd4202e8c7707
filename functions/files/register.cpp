#include "functions/families.h"
#include "functions/files/functions.h"

namespace api::files {

using engine::create;

namespace {

template <bool Directories>
std::unique_ptr<FunctionBase> createFind() {
  return std::make_unique<FunctionFileFind>(Directories);
}

}  // namespace

void registerFunctions(engine::FunctionRegistry& r) {
  r.registerRetBool(L"dirExists", create<FunctionDirExists>);
  r.registerRetBool(L"fileExists", create<FunctionFileExists>);
  r.registerRetBool(L"fileIsSigned", create<FunctionFileIsSigned>);
  r.registerRetError(L"dirCreate", create<FunctionDirCreate>);
  r.registerRetError(L"dirCopyRec", create<FunctionDirCopyRecursive>);
  r.registerRetError(L"dirDeleteRec", create<FunctionDirDeleteRecursive>);
  r.registerRetError(L"fileFind", createFind<false>);
  r.registerRetError(L"dirFind", createFind<true>);
  r.registerRetError(L"fileCopySingle", create<FunctionFileCopySingle>);
  r.registerRetError(L"fileMove", create<FunctionFileMoveSingle>);
  r.registerRetError(L"dirMove", create<FunctionFileMoveSingle>);
  r.registerRetError(L"fileCopyPattern", create<FunctionFileCopyPattern>);
  r.registerRetError(L"fileDeletePattern", create<FunctionFileDeletePattern>);
  r.registerRetBool(L"fileOpenOrCreate", create<FunctionFileOpenOrCreate>);
  r.registerPlain(L"fileClose", create<FunctionFileClose>);
  r.registerRetBool(L"fileWrite", create<FunctionFileWrite>);
}

}  // namespace api::files
