#pragma once
// Privileges of the process's own token.
#include <initializer_list>

namespace platform {

// Enables each named privilege the token holds; names it lacks, and a token
// that cannot be opened, are passed over silently.
void enablePrivileges(std::initializer_list<const wchar_t*> names);

}  // namespace platform
