#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/processes/detail/impersonation.h"
#include "functions/processes/functions.h"

namespace api::processes {

namespace {

constexpr engine::LogLine kStart{L"processRevertToSelf function called"};

}  // namespace

// Without an impersonation this still succeeds: the thread acts as itself.
void FunctionProcessRevertToSelf::execute() {
  clearResult();
  engine::log(kStart);
  endWith(detail::endImpersonation(runtime()));
}

const engine::TagDoc FunctionProcessRevertToSelf::doc{
    L"Ends an impersonation begun by `processImpersonateUser`: the interpreter acts as its own user again. Without an impersonation it succeeds all the same.",
    {kStart, engine::kErrorEnd.as(L"processRevertToSelf")},
    L"Error text: the Windows code of the revert, which does not fail in practice.",
    L"<processImpersonateUser domain=\".\" username=\"update\" password=\"518DA6610C1C0B17F53D0327FC205E03\" encrypted=\"true\"/>\n<fileCopySingle src=\"\\\\server\\share\\app.dll\" dest=\"C:\\Program Files\\App\\app.dll\" failIfExists=\"false\"/>\n<processRevertToSelf/>"};

}  // namespace api::processes
