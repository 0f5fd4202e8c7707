#pragma once
// Passwords given to scripts in enciphered form: the text's bytes under the
// program's cipher, written as hexadecimal text.
#include <optional>
#include <string>
#include <string_view>

namespace engine {

// Upper-case hex of the enciphered bytes (zero-padded to whole blocks).
std::wstring encipherToHex(std::string_view plain);

// The deciphered bytes (padding included), or std::nullopt when the text is
// empty or not hexadecimal.
std::optional<std::string> decipherHex(std::wstring_view hex);

}  // namespace engine
