#include "functions/files/functions.h"

namespace api::files {

const Parameters& DeleteFunction::parameters() {
  static const Parameters list = {engine::text<&DeleteFunction::path_>(L"path", Need::NonEmpty),
      engine::flag<&DeleteFunction::ignoreErrors_>(L"ignoreErrors"),
      engine::flag<&DeleteFunction::afterRebootIfFails_>(L"afterRebootIfFails"),
      engine::flag<&DeleteFunction::renameIfFails_>(L"renameIfFails")};
  return list;
}

}  // namespace api::files
