#pragma once
// Calling a function a library exports, guarded so that whatever the function
// does short of ending the process (an access violation, a division by zero, a
// stack overflow, a C++ exception, abort()) leaves the caller running.
#include <cstdint>
#include <string>

namespace platform {

struct ExportCall {
  uint32_t code = 0;     // the function's result, or the Windows error of the load or the lookup
  bool crashed = false;  // the function raised an exception or aborted instead of returning
};

// Loads `library`, calls its export `name` as `uint32_t f(int32_t, const wchar_t*)`
// with (integer, text), and frees the library again. The call runs on a thread
// of its own that acts as the same user as the calling thread.
ExportCall callExport(const std::wstring& library, const std::string& name, int32_t integer, const std::wstring& text);

}  // namespace platform
