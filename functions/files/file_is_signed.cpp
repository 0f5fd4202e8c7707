#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/files/functions.h"
#include "platform/signature.h"

namespace api::files {

namespace {

constexpr engine::LogLine kStart{L"fileIsSigned function called for %s"};

}  // namespace

void FunctionFileIsSigned::execute() {
  const std::wstring path = expand(path_);
  engine::log(kStart, path.c_str());
  finish(platform::hasEmbeddedSignature(path) || platform::isSignedInCatalog(path));
}

const engine::TagDoc FunctionFileIsSigned::doc{
    L"Tells whether the file `path`, expanded when it runs, carries an embedded Authenticode signature that verifies, or else whether a security catalog of the system holds its hash with a signature that verifies. Revocation is not checked and nothing is fetched from the network.",
    {kStart, engine::kBoolEnd.as(L"fileIsSigned")},
    L"True: a signature verifies. False: the file is unsigned, its signature does not verify (a changed file, an untrusted certificate), or it is missing or cannot be read.",
    L"<fileIsSigned path=\"%TEMP%\\setup.exe\">\n  <onFalse><trace value=\"setup.exe is not signed\"/><exit code=\"2\"/></onFalse>\n</fileIsSigned>"};

}  // namespace api::files
