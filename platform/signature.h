#pragma once
// Authenticode checks of a file: its own embedded signature, or a security
// catalog of the system that holds its hash.
#include <string>

namespace platform {

bool hasEmbeddedSignature(const std::wstring& path);
bool isSignedInCatalog(const std::wstring& path);

}  // namespace platform
