#include "functions/processes/detail/password.h"

#include "engine/cipher_text.h"
#include "platform/text.h"

namespace api::processes::detail {

std::optional<std::wstring> decipherPassword(const std::wstring& hex) {
  const std::optional<std::string> bytes = engine::decipherHex(hex);
  if (!bytes) return std::nullopt;
  return platform::fromAnsi(bytes->c_str());  // the zero padding of the last block ends it
}

}  // namespace api::processes::detail
