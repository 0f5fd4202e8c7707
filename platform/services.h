#pragma once
// The service control manager. Each call returns 0 or the Windows error code
// of its failure; handles come back in owners that close them on every path.
// Opening the manager and querying a status pass through the fault seam, so
// the failures only a broken manager would give can still be tested.
#include <cstdint>
#include <string>

#include "platform/owned.h"

namespace platform {

uint32_t openServiceManager(uint32_t access, UniqueServiceHandle& manager);
uint32_t openService(const UniqueServiceHandle& manager, const std::wstring& name, uint32_t access,
                     UniqueServiceHandle& service);
// The service's current state (SERVICE_RUNNING, SERVICE_STOPPED, ...).
uint32_t queryServiceState(const UniqueServiceHandle& service, uint32_t& state);
// Asks the manager to start the service, without arguments.
uint32_t startService(const UniqueServiceHandle& service);
// Sends SERVICE_CONTROL_STOP.
uint32_t stopService(const UniqueServiceHandle& service);
// Deletes the service, or marks it for deletion while it runs.
uint32_t deleteService(const UniqueServiceHandle& service);

struct NewService {
  std::wstring name;
  // Empty: none given, so the system shows the name (an empty display name
  // would clash with every other service created without one).
  std::wstring displayName;
  uint32_t type = 0, startType = 0, errorControl = 0;
  std::wstring path, group;  // empty: none
  // Names each ended by a zero character; the string's own terminator is the
  // extra zero that ends the list. Empty: none.
  std::wstring dependencies;
};
// Creates the service (running as LocalSystem) and closes its handle at once.
uint32_t createService(const UniqueServiceHandle& manager, const NewService& service);

}  // namespace platform
