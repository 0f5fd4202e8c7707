#include "functions/files/functions.h"

namespace api::files {

bool PathQuery::readAttributes() { return readText(L"path", path_, engine::Need::NonEmpty); }

}  // namespace api::files
