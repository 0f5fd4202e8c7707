#include <algorithm>

#include "engine/log.h"
#include "functions/services/functions.h"
#include "platform/services.h"

namespace api::services {

const Parameters& FunctionServiceCreate::parameters() {
  using F = FunctionServiceCreate;
  static const Parameters list = engine::joined(
      {engine::text<&F::displayName_>(L"displayName", Need::Optional),
       engine::integer<&F::type_>(L"serviceType", Need::NonEmpty),
       engine::integer<&F::startType_>(L"startType", Need::NonEmpty),
       engine::integer<&F::errorControl_>(L"errorControl", Need::NonEmpty),
       engine::text<&F::path_>(L"path", Need::Optional), engine::literal<&F::group_>(L"group", Need::Optional),
       engine::literal<&F::dependencies_>(L"dependencies", Need::Optional)},
      ServiceFunction::parameters());
  return list;
}

namespace {

// `dependencies` as a script writes it (names separated by "/", empty names
// skipped) in the form the service manager expects: each name ended by a zero
// character, the string's own terminator ending the list.
std::wstring dependencyList(const std::wstring& written) {
  std::wstring list;
  for (size_t start = 0; start < written.size();) {
    const size_t end = std::min(written.find(L'/', start), written.size());
    if (end > start) list.append(written, start, end - start).push_back(L'\0');
    start = end + 1;
  }
  return list;
}

}  // namespace

void FunctionServiceCreate::execute() {
  clearResult();
  platform::NewService service;
  service.name = expand(name_);
  service.displayName = expand(displayName_);
  service.path = expand(path_);
  engine::log(
      L"serviceCreate function called for '%s'. Display name: '%s', serviceType: %d, startType: %d, "
      L"errorControl: %d, path: '%s', group: '%s', depends: '%s'",
      service.name.c_str(), service.displayName.c_str(), type_, startType_, errorControl_, service.path.c_str(),
      group_.c_str(), dependencies_.c_str());
  service.type = static_cast<uint32_t>(type_);
  service.startType = static_cast<uint32_t>(startType_);
  service.errorControl = static_cast<uint32_t>(errorControl_);
  service.group = group_;
  service.dependencies = dependencyList(dependencies_);
  UniqueServiceHandle manager;
  uint32_t error = platform::openServiceManager(platform::ManagerAccess::Create, manager);
  if (error != 0) {
    error = failedTo(error, L"cannot open scm");
  } else if ((error = platform::createService(manager, service)) != 0) {
    error = failedTo(error, L"cannot create service");
  }
  finishWith(error);
}

const engine::TagDoc FunctionServiceCreate::doc{
    L"Creates the service `name`, run as LocalSystem, from the numbers of `CreateService`, read when the script is prepared: `serviceType` (16 own process, 32 shared process, 1 kernel driver), `startType` (2 automatic, 3 on demand, 4 disabled), `errorControl` (0 ignore, 1 normal). `path` is the command line, quoted where it has blanks; `name`, `displayName` (default: the name) and `path` are expanded when it runs. `group` and `dependencies` are taken as written: `dependencies` lists the services (or, with a leading `+`, groups) that must run first, separated by `/`.",
    L"serviceCreate function called for '%s'. Display name: '%s', serviceType: %d, startType: %d, errorControl: %d, path: '%s', group: '%s', depends: '%s'\nserviceCreate cannot open scm\nserviceCreate cannot create service\nserviceCreate function end with %s. err:'%s'",
    L"Error text: the Windows code of the step that failed (logged before the end line): `5` access denied, `1073` the service exists, `1078` the display name is taken, `87` a number the service manager does not accept.",
    L"<serviceCreate name=\"AppSvc\" displayName=\"Contoso App Service\" serviceType=\"16\" startType=\"2\" errorControl=\"1\" path=\"&quot;C:\\Program Files\\App\\svc.exe&quot; -service\" dependencies=\"Tcpip/Dhcp\"/>"};

}  // namespace api::services
