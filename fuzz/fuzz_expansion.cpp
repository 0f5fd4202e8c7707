// libFuzzer target for variable expansion: each input byte is one character of
// an attribute text, expanded by the one-pass expansion and by the simple
// reference in the tests; any difference stops the run.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "engine/expansion.h"
#include "tests/engine/expansion_reference.h"

namespace {

// The reference rescans for every closing % and recurses into every index.
constexpr size_t kMaxInput = 2048;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxInput) return 0;
  const std::wstring text(data, data + size);
  reference::FakeSource source;
  if (engine::expandReferences(text, source) != reference::expand(text, source)) std::abort();
  return 0;
}
