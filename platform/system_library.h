#pragma once
// The program's libraries that Windows does not always take from its system
// folder (urlmon, wintrust) are not imported: they are loaded when first used,
// from the system folder only, so that a copy planted beside the program or in
// the current directory never runs inside it.
#include <cstdint>

namespace platform {

// Makes every later load of a library by name (the program's own, and those
// the system's libraries make) look in the system folder only. Called first
// thing at start-up.
void restrictLibrarySearch();

// The address of `name` exported by `library` from the system folder; the
// library stays loaded for the life of the process. nullptr, with the Windows
// error in `error`, when the library or the export cannot be found.
void* systemExport(const wchar_t* library, const char* name, uint32_t& error);

template <class Function>
Function* systemFunction(const wchar_t* library, const char* name, uint32_t& error) {
  return reinterpret_cast<Function*>(systemExport(library, name, error));
}

}  // namespace platform
