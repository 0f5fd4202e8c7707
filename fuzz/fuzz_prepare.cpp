// libFuzzer target for the engine's pure parts: the input is a script file's
// bytes, loaded as the program loads one, prepared (loops expanded, functions
// built, labels checked) with stand-in functions, and run for a bounded
// number of steps so that goto loops end; then checked, as upkeep-check does,
// on a second copy.
#include <tinyxml.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "engine/check.h"
#include "engine/engine.h"
#include "engine/script_file.h"
#include "tests/engine/stand_in_functions.h"

namespace {

constexpr size_t kMaxInput = 8192;
constexpr int kMaxSteps = 1000;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Every function logs: keep the log off the fuzzer's own output.
  return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxInput) return 0;
  static const engine::FunctionRegistry registry = stand_in::registry();
  TiXmlDocument document;
  std::vector<unsigned char> bytes(data, data + size);
  if (!engine::parseScript(bytes, size, document)) return 0;
  TiXmlDocument copy(document);
  engine::checkScript(copy, registry);
  engine::Engine engine(registry);
  if (engine.prepare(document, {{L"preset", L"%preset%"}})) {
    engine::FunctionBase* current = engine.first();
    for (int step = 0; current && step < kMaxSteps; ++step) current = engine.step(current);
  }
  engine.reset();
  return 0;
}
