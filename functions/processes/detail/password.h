#pragma once
#include <optional>
#include <string>

namespace api::processes::detail {

// The password an enciphered hexadecimal text (as upkeep-password.exe writes
// it) stands for: the deciphered bytes up to the first zero, read in the ANSI
// code page. Nothing when the text is not hexadecimal or decodes to no bytes.
std::optional<std::wstring> decipherPassword(const std::wstring& hex);

}  // namespace api::processes::detail
