#include "platform/services.h"

#include <windows.h>

#include "platform/changes.h"
#include "platform/fault.h"

namespace platform {
namespace {

uint32_t outcome(BOOL succeeded) { return succeeded ? 0 : GetLastError(); }

const wchar_t* nullWhenEmpty(const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); }

SC_HANDLE handleOf(const UniqueServiceHandle& service) { return static_cast<SC_HANDLE>(service.get()); }

DWORD accessMask(ManagerAccess access) {
  switch (access) {
    case ManagerAccess::Enumerate: return SC_MANAGER_ENUMERATE_SERVICE;
    case ManagerAccess::Create: return SC_MANAGER_CREATE_SERVICE;
    default: return 0;
  }
}

DWORD accessMask(ServiceAccess access) {
  return (has(access, ServiceAccess::QueryStatus) ? SERVICE_QUERY_STATUS : 0) |
         (has(access, ServiceAccess::Start) ? SERVICE_START : 0) |
         (has(access, ServiceAccess::Stop) ? SERVICE_STOP : 0) | (has(access, ServiceAccess::Delete) ? DELETE : 0);
}

}  // namespace

uint32_t openServiceManager(ManagerAccess access, UniqueServiceHandle& manager) {
  manager.reset();
  if (const uint32_t error = injectedFault(Call::ServiceManager)) return error;
  *manager.put() = OpenSCManagerW(nullptr, nullptr, accessMask(access));
  return outcome(manager.valid());
}

uint32_t openService(const UniqueServiceHandle& manager, const std::wstring& name, ServiceAccess access,
                     UniqueServiceHandle& service) {
  service.reset();
  if (const uint32_t error = injectedFault(Call::ServiceOpen)) return error;
  *service.put() = OpenServiceW(handleOf(manager), name.c_str(), accessMask(access));
  nameHandle(service.get(), name);
  return outcome(service.valid());
}

uint32_t queryServiceState(const UniqueServiceHandle& service, ServiceState& state) {
  if (const uint32_t error = injectedFault(Call::ServiceQuery)) return error;
  SERVICE_STATUS status = {};
  if (!QueryServiceStatus(handleOf(service), &status)) return GetLastError();
  state = static_cast<ServiceState>(status.dwCurrentState);
  return 0;
}

uint32_t startService(const UniqueServiceHandle& service) {
  if (const uint32_t error = injectedFault(Call::ServiceStart)) return error;
  if (whatIf()) return wouldChange(Call::ServiceStart, L"start service " + handleName(service.get()));
  return noteChange(outcome(StartServiceW(handleOf(service), 0, nullptr)));
}

uint32_t stopService(const UniqueServiceHandle& service) {
  if (const uint32_t error = injectedFault(Call::ServiceControl)) return error;
  if (whatIf()) return wouldChange(Call::ServiceControl, L"stop service " + handleName(service.get()));
  SERVICE_STATUS status = {};
  return noteChange(outcome(ControlService(handleOf(service), SERVICE_CONTROL_STOP, &status)));
}

uint32_t deleteService(const UniqueServiceHandle& service) {
  if (const uint32_t error = injectedFault(Call::ServiceDelete)) return error;
  if (whatIf()) return wouldChange(Call::ServiceDelete, L"delete service " + handleName(service.get()));
  return noteChange(outcome(DeleteService(handleOf(service))));
}

uint32_t createService(const UniqueServiceHandle& manager, const NewService& s) {
  if (const uint32_t error = injectedFault(Call::ServiceCreate)) return error;
  if (whatIf()) {
    const UniqueServiceHandle existing(OpenServiceW(handleOf(manager), s.name.c_str(), SERVICE_QUERY_STATUS));
    if (existing) return ERROR_SERVICE_EXISTS;
    return wouldChange(Call::ServiceCreate, L"create service " + s.name + L" running " + s.path);
  }
  UniqueServiceHandle created(CreateServiceW(handleOf(manager), s.name.c_str(), nullWhenEmpty(s.displayName), 0, s.type,
                                             s.startType, s.errorControl, nullWhenEmpty(s.path), nullWhenEmpty(s.group),
                                             nullptr, nullWhenEmpty(s.dependencies), nullptr, nullptr));
  return noteChange(outcome(created.valid()));
}

}  // namespace platform
