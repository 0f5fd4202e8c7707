#pragma once
// What a download's HRESULT tells the script.
#include <cstdint>

namespace api::files {

// 0 (success) unless the HRESULT is negative with a non-zero low word; then
// that low word, which for an HRESULT made from a Win32 error is the error's
// code. A failure whose low word is 0 deliberately counts as success.
constexpr uint32_t downloadError(int32_t hresult) {
  const uint32_t low = static_cast<uint32_t>(hresult) & 0xFFFF;
  return hresult < 0 ? low : 0;
}

}  // namespace api::files
