#pragma once
// The seam through which tests make system calls fail on purpose. Every
// wrapper in platform/ asks injectedFault() before each system call it makes,
// with the kind of that call, so a failure path that only a broken disk, a
// stuck service or a lost network would reach can still be tested.
//
// Tests arm it in-process (failCall), or run the interpreter built with the
// arming lines (tests/helpers/upkeep_faults.cpp):
//   upkeep-faults.exe --fail write:2:112 /file script.xml
// The program itself never arms it. Each kind also says whether its calls
// read the machine or change it (changesMachine), so a run can tell the two
// apart.
#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

// One entry per kind of call a test can make fail; fault.cpp holds their
// names and classification in one table, in this order.
enum class Call : uint8_t {
  Create,            // "create": a file opened for writing
  Write,             // "write": one block written to a file
  Flush,             // "flush": a file's buffers pushed to the disk
  Close,             // "close": a written file's handle closed
  Replace,           // "replace": a finished file moved over the one it replaces
  Copy,              // "copy": one file copied
  Move,              // "move": a file or directory moved, renamed or left to delete at restart
  Delete,            // "delete": one file deleted
  CreateDirectory,   // "mkdir"
  RemoveDirectory,   // "rmdir"
  TraceWrite,        // "trace": one line written to the trace file
  Open,              // "open": a file opened for reading
  Read,              // "read": one block read
  List,              // "list": a directory listing started, or one step of it (also a last write time)
  Attributes,        // "attributes": attributes, existence, long path read
  AttributeWrite,    // "attrwrite": the read-only attribute cleared
  RegistryOpen,      // "regopen": a registry key opened
  RegistryQuery,     // "regquery": one value read
  RegistryEnum,      // "regenum": one step of a key's subkey or value list
  RegistryWrite,     // "regwrite": a registry value written or deleted
  RegistryKey,       // "regkey": a registry key created or deleted
  Process,           // "process": a program started
  Snapshot,          // "snapshot": the process list, a process's modules, a process opened by id
  Wait,              // "wait": a wait on processes
  Terminate,         // "terminate": one process ended
  ServiceManager,    // "scm": the service control manager opened
  ServiceOpen,       // "svcopen": a service opened
  ServiceQuery,      // "svcquery": one query of a service's status
  ServiceStart,      // "svcstart": a service asked to start
  ServiceControl,    // "svccontrol": a control (stop) sent to a service
  ServiceCreate,     // "svccreate"
  ServiceDelete,     // "svcdelete"
  ProfileRead,       // "iniread": a value read from an INI file
  ProfileWrite,      // "iniwrite": a value written to an INI file
  Download,          // "download"
  Signature,         // "signature": one check of a file's signature
  Library,           // "library": a DLL loaded, an export looked up, its thread started
  Logon,             // "logon": a logon, an impersonation or its end
  Environment,       // "environment": %name% references expanded
  WorkingDirectory,  // "workdir": the working directory set
  Count
};

// From the nth call of `call` on (1 = the next one), every call fails with
// `error`, as a full disk or a lost device keeps failing.
void failCall(Call call, unsigned nth, uint32_t error);
// Disarms every kind and sets every count back to 0.
void clearFaults();

// 0 when the call may go ahead, else the error it must fail with. Counts the call.
uint32_t injectedFault(Call call);
// How many times injectedFault(call) was asked since the start or clearFaults().
unsigned callCount(Call call);

// The name a kind is armed by ("write"), and back; nothing for an unknown name.
std::string_view callName(Call call);
std::optional<Call> callNamed(std::string_view name);
// True for kinds whose calls change the machine (files, registry, services,
// processes, logons); false for those that only read it, or change only the
// process's own state (its working directory).
bool changesMachine(Call call);

// Arms one fault written "name:nth:error" (write:2:112); false when the text is not one.
bool failCallFromText(std::string_view spec);

}  // namespace platform
