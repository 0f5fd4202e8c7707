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
  if (const uint32_t error = platform::openServiceManager(platform::ManagerAccess::Connect, manager))
    return failedTo(error, L"cannot open scm");
  if (const uint32_t error = platform::openService(manager, name, platform::ServiceAccess::Delete, service))
    return failedTo(error, L"cannot open service");
  if (const uint32_t error = platform::deleteService(service)) return failedTo(error, L"failed");
  return 0;
}

const engine::TagDoc FunctionServiceDelete::doc{
    L"Deletes the service `name`, expanded when it runs. A running service is not stopped first: it is only marked for deletion and goes once it stops, so stop it with `serviceStop` before.",
    L"serviceDelete function called for '%s'\nserviceDelete cannot open scm\nserviceDelete cannot open service\nserviceDelete failed\nserviceDelete function end with %s. err:'%s'",
    L"Error text: the Windows code of the step that failed (logged before the end line): `5` access denied, `1060` no such service, `1072` it is marked for deletion already.",
    L"<serviceStop name=\"OldSvc\" waittime=\"30000\"/>\n<serviceDelete name=\"OldSvc\">\n  <onerrorspec err=\"1060\"><trace value=\"OldSvc was removed before\"/></onerrorspec>\n</serviceDelete>"};

}  // namespace api::services
