#include "engine/log.h"
#include "functions/base/functions.h"

namespace api::base {

const Parameters& FunctionTraceSetFile::parameters() {
  static const Parameters list = {engine::text<&FunctionTraceSetFile::path_>(L"path", Need::NonEmpty)};
  return list;
}

// A failure stays recorded for later runs of the same element.
void FunctionTraceSetFile::execute() {
  const std::wstring path = expand(path_);
  engine::log(L"TraceSetFile: %s", path.c_str());
  if (const uint32_t error = engine::setTraceFile(path)) fail(error);
  logEnd();
}

}  // namespace api::base
