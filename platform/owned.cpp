#include "platform/owned.h"

#include <windows.h>

namespace platform {

void KernelHandleTraits::close(Handle h) { CloseHandle(h); }
void FindHandleTraits::close(Handle h) { FindClose(h); }
void RegistryKeyTraits::close(Handle h) { RegCloseKey(static_cast<HKEY>(h)); }
void ServiceHandleTraits::close(Handle h) { CloseServiceHandle(static_cast<SC_HANDLE>(h)); }
void ModuleTraits::close(Handle h) { FreeLibrary(static_cast<HMODULE>(h)); }
void MappedViewTraits::close(Handle h) { UnmapViewOfFile(h); }

}  // namespace platform
