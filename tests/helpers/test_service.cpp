// A service for the service cases: one binary serves any number of services,
// each taking its name from the service manager.
//   test_service.exe <marker file> [<start-pending ms>]
// Stays START_PENDING for the given time, then reports RUNNING and appends
// "started <name>" to the marker file; on STOP or SHUTDOWN it appends
// "stopped <name>" and reports STOPPED. Started from a console, it is no
// service: the dispatcher fails and the program exits with that error.
#include <windows.h>

#include <cwchar>
#include <string>

namespace {

const wchar_t* markerFile = nullptr;
DWORD pendingMs = 0;
std::wstring serviceName;
SERVICE_STATUS_HANDLE statusHandle = nullptr;
HANDLE stopEvent = nullptr;

void report(DWORD state, DWORD waitHint = 0) {
  SERVICE_STATUS status = {};
  status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
  status.dwCurrentState = state;
  status.dwControlsAccepted = state == SERVICE_RUNNING ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN : 0;
  status.dwWaitHint = waitHint;
  SetServiceStatus(statusHandle, &status);
}

void mark(const char* what) {
  HANDLE file = CreateFileW(markerFile, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  std::string line = what;
  line += ' ';
  for (wchar_t c : serviceName) line += static_cast<char>(c < 0x80 ? c : '?');
  line += '\n';
  DWORD written = 0;
  WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
  CloseHandle(file);
}

DWORD WINAPI handler(DWORD control, DWORD, void*, void*) {
  switch (control) {
    case SERVICE_CONTROL_STOP:
    case SERVICE_CONTROL_SHUTDOWN:
      report(SERVICE_STOP_PENDING);
      SetEvent(stopEvent);
      return NO_ERROR;
    case SERVICE_CONTROL_INTERROGATE: return NO_ERROR;
    default: return ERROR_CALL_NOT_IMPLEMENTED;
  }
}

void WINAPI serviceMain(DWORD argc, wchar_t** argv) {
  serviceName = argc > 0 ? argv[0] : L"";
  statusHandle = RegisterServiceCtrlHandlerExW(serviceName.c_str(), handler, nullptr);
  if (!statusHandle) return;
  stopEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (pendingMs > 0) {
    report(SERVICE_START_PENDING, pendingMs + 1000);
    Sleep(pendingMs);
  }
  mark("started");
  report(SERVICE_RUNNING);
  WaitForSingleObject(stopEvent, INFINITE);
  mark("stopped");
  report(SERVICE_STOPPED);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc < 2) return ERROR_INVALID_PARAMETER;
  markerFile = argv[1];
  if (argc > 2) pendingMs = static_cast<DWORD>(std::wcstoul(argv[2], nullptr, 10));
  SERVICE_TABLE_ENTRYW table[] = {{const_cast<wchar_t*>(L""), serviceMain}, {nullptr, nullptr}};
  if (!StartServiceCtrlDispatcherW(table)) return static_cast<int>(GetLastError());
  return 0;
}
