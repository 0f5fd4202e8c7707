#include "engine/log.h"
#include "functions/services/functions.h"
#include "platform/services.h"

namespace api::services {

void FunctionServiceDelete::execute() {
  clearResult();
  const std::wstring name = expand(name_);
  engine::log(L"serviceDelete function called for '%s'", name.c_str());
  finishWith(remove(name));
}

// A running service is not stopped first: the manager only marks it for
// deletion, and it goes once it stops.
uint32_t FunctionServiceDelete::remove(const std::wstring& name) const {
  UniqueServiceHandle manager, service;
  if (const uint32_t error = platform::openServiceManager(0, manager)) return failedTo(error, L"cannot open scm");
  if (const uint32_t error = platform::openService(manager, name, DELETE, service))
    return failedTo(error, L"cannot open service");
  if (const uint32_t error = platform::deleteService(service)) return failedTo(error, L"failed");
  return 0;
}

}  // namespace api::services
