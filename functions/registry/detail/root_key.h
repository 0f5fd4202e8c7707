#pragma once
// The names of the five predefined root keys a script can name.
#include <string>
#include <vector>

namespace api::registry::detail {

// The root attribute's accepted names, in the order of platform::RootKey.
std::vector<std::wstring> rootNames();

}  // namespace api::registry::detail
