#pragma once
// The seam through which tests make system calls fail on purpose. Every
// wrapper in platform/ that changes the disk asks injectedFault() first, so a
// failure path that only a broken disk would reach can still be tested.
//
// Tests arm it in-process (failCall), or run the interpreter built with the
// arming lines (tests/helpers/upkeep_faults.cpp):
//   upkeep-faults.exe --fail write:2:112 /file script.xml
// The program itself never arms it.
#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

// One entry per kind of call a test can make fail; callNamed() knows their names.
enum class Call : uint8_t {
  Create,           // "create": opening a file for writing
  Write,            // "write": one block written to a file
  Flush,            // "flush": a file's buffers pushed to the disk
  Close,            // "close": a written file's handle closed
  Replace,          // "replace": a finished file moved over the one it replaces
  Copy,             // "copy": one file copied
  Move,             // "move": a file or directory moved or renamed
  Delete,           // "delete": one file deleted
  CreateDirectory,  // "mkdir"
  RemoveDirectory,  // "rmdir"
  TraceWrite,       // "trace": one line written to the trace file
  ServiceManager,   // "scm": opening the service control manager
  ServiceQuery,     // "svcquery": one query of a service's status
  Terminate,        // "terminate": one process ended by processKill
  Count
};

// From the nth call of `call` on (1 = the next one), every call fails with
// `error`, as a full disk or a lost device keeps failing.
void failCall(Call call, unsigned nth, uint32_t error);
void clearFaults();

// 0 when the call may go ahead, else the error it must fail with. Counts the call.
uint32_t injectedFault(Call call);

std::optional<Call> callNamed(std::string_view name);

// Arms one fault written "name:nth:error" (write:2:112); false when the text is not one.
bool failCallFromText(std::string_view spec);

}  // namespace platform
