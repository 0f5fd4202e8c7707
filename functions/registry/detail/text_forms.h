#pragma once
// The text forms of registry data: what regRead stores in a variable and what
// regWrite turns back into bytes. Pure code, so it is tested on its own.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"

namespace api::registry::detail {

// The value types that have a text form, as their registry codes.
constexpr uint32_t code(platform::ValueType type) { return static_cast<uint32_t>(type); }
enum ValueType : uint32_t {
  Sz = code(platform::ValueType::Sz),
  ExpandSz = code(platform::ValueType::ExpandSz),
  Binary = code(platform::ValueType::Binary),
  Dword = code(platform::ValueType::Dword),
  MultiSz = code(platform::ValueType::MultiSz),
  Qword = code(platform::ValueType::Qword)
};

// "REG_SZ" and the like, compared exactly; 0 for any other name.
uint32_t typeCode(std::wstring_view name);

// The data as text; nothing for a type without a text form. An EXPAND_SZ
// comes back unexpanded.
std::optional<std::wstring> dataToText(uint32_t type, const std::vector<uint8_t>& bytes);

// The bytes to store for `text`: 0, 111 (a character that is not a hex digit
// in binary text) or 1630 (a type without a text form).
uint32_t textToData(uint32_t type, std::wstring_view text, std::vector<uint8_t>& bytes);

}  // namespace api::registry::detail
