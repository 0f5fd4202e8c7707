#pragma once
// The text forms of registry data: what regRead stores in a variable and what
// regWrite turns back into bytes. Pure code, so it is tested on its own.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace api::registry::detail {

// The value types that have a text form, with their registry codes.
enum ValueType : uint32_t { Sz = 1, ExpandSz = 2, Binary = 3, Dword = 4, MultiSz = 7, Qword = 11 };

// "REG_SZ" and the like, compared exactly; 0 for any other name.
uint32_t typeCode(std::wstring_view name);

// The data as text; nothing for a type without a text form. An EXPAND_SZ
// comes back unexpanded.
std::optional<std::wstring> dataToText(uint32_t type, const std::vector<uint8_t>& bytes);

// The bytes to store for `text`: 0, 111 (a character that is not a hex digit
// in binary text) or 1630 (a type without a text form).
uint32_t textToData(uint32_t type, std::wstring_view text, std::vector<uint8_t>& bytes);

}  // namespace api::registry::detail
