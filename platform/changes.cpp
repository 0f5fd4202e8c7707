#include "platform/changes.h"

namespace platform {
namespace {

uint64_t changes = 0;

}  // namespace

uint32_t noteChange(uint32_t error) {
  if (error == 0) ++changes;
  return error;
}

uint64_t changesMade() { return changes; }

}  // namespace platform
