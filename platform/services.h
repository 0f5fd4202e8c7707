#pragma once
// The service control manager. Each call returns 0 or the Windows error code
// of its failure; handles come back in owners that close them on every path.
// Opening the manager and querying a status pass through the fault seam, so
// the failures only a broken manager would give can still be tested.
#include <cstdint>
#include <string>

#include "platform/flags.h"
#include "platform/owned.h"

namespace platform {

// What the manager is opened for: only connecting, listing services, creating one.
enum class ManagerAccess : uint8_t { Connect, Enumerate, Create };
// What a service is opened for.
enum class ServiceAccess : uint8_t { QueryStatus = 1, Start = 2, Stop = 4, Delete = 8 };
template <>
inline constexpr bool kIsFlagSet<ServiceAccess> = true;
// A service's current state, with the manager's codes.
enum class ServiceState : uint32_t {
  Unknown = 0,
  Stopped = 1,
  StartPending = 2,
  StopPending = 3,
  Running = 4,
  ContinuePending = 5,
  PausePending = 6,
  Paused = 7
};

uint32_t openServiceManager(ManagerAccess access, UniqueServiceHandle& manager);
uint32_t openService(const UniqueServiceHandle& manager, const std::wstring& name, ServiceAccess access,
                     UniqueServiceHandle& service);
uint32_t queryServiceState(const UniqueServiceHandle& service, ServiceState& state);
// Asks the manager to start the service, without arguments.
uint32_t startService(const UniqueServiceHandle& service);
// Asks the service to stop.
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
