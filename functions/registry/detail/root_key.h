#pragma once
// The five predefined root keys a script can name.
#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace api::registry::detail {

enum class Root : uint8_t { ClassesRoot, CurrentUser, LocalMachine, Users, CurrentConfig };

// The root attribute's accepted names, in the order of Root.
std::vector<std::wstring> rootNames();
HKEY rootKey(Root root);

}  // namespace api::registry::detail
