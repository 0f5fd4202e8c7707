#include "platform/services.h"

#include <windows.h>

#include "platform/changes.h"
#include "platform/fault.h"

namespace platform {
namespace {

uint32_t outcome(BOOL succeeded) { return succeeded ? 0 : GetLastError(); }

const wchar_t* nullWhenEmpty(const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); }

}  // namespace

uint32_t openServiceManager(uint32_t access, UniqueServiceHandle& manager) {
  manager.reset();
  if (const uint32_t error = injectedFault(Call::ServiceManager)) return error;
  *manager.put() = OpenSCManagerW(nullptr, nullptr, access);
  return outcome(manager.valid());
}

uint32_t openService(const UniqueServiceHandle& manager, const std::wstring& name, uint32_t access,
                     UniqueServiceHandle& service) {
  service.reset();
  if (const uint32_t error = injectedFault(Call::ServiceOpen)) return error;
  *service.put() = OpenServiceW(manager.get(), name.c_str(), access);
  return outcome(service.valid());
}

uint32_t queryServiceState(const UniqueServiceHandle& service, uint32_t& state) {
  if (const uint32_t error = injectedFault(Call::ServiceQuery)) return error;
  SERVICE_STATUS status = {};
  if (!QueryServiceStatus(service.get(), &status)) return GetLastError();
  state = status.dwCurrentState;
  return 0;
}

uint32_t startService(const UniqueServiceHandle& service) {
  if (const uint32_t error = injectedFault(Call::ServiceStart)) return error;
  return noteChange(outcome(StartServiceW(service.get(), 0, nullptr)));
}

uint32_t stopService(const UniqueServiceHandle& service) {
  if (const uint32_t error = injectedFault(Call::ServiceControl)) return error;
  SERVICE_STATUS status = {};
  return noteChange(outcome(ControlService(service.get(), SERVICE_CONTROL_STOP, &status)));
}

uint32_t deleteService(const UniqueServiceHandle& service) {
  if (const uint32_t error = injectedFault(Call::ServiceDelete)) return error;
  return noteChange(outcome(DeleteService(service.get())));
}

uint32_t createService(const UniqueServiceHandle& manager, const NewService& s) {
  if (const uint32_t error = injectedFault(Call::ServiceCreate)) return error;
  UniqueServiceHandle created(CreateServiceW(manager.get(), s.name.c_str(), nullWhenEmpty(s.displayName), 0, s.type,
                                             s.startType, s.errorControl, nullWhenEmpty(s.path), nullWhenEmpty(s.group),
                                             nullptr, nullWhenEmpty(s.dependencies), nullptr, nullptr));
  return noteChange(outcome(created.valid()));
}

}  // namespace platform
