#include "engine/log.h"
#include "functions/files/functions.h"
#include "platform/signature.h"

namespace api::files {

void FunctionFileIsSigned::execute() {
  const std::wstring path = expand(path_);
  engine::log(L"fileIsSigned function called for %s", path.c_str());
  finish(platform::hasEmbeddedSignature(path) || platform::isSignedInCatalog(path));
}

}  // namespace api::files
