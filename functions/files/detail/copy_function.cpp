#include "functions/files/functions.h"

namespace api::files {

const Parameters& CopyFunction::parameters() {
  static const Parameters list = {engine::text<&CopyFunction::src_>(L"src", Need::NonEmpty),
      engine::text<&CopyFunction::dest_>(L"dest", Need::NonEmpty),
      engine::flag<&CopyFunction::failIfExists_>(L"failIfExists", Need::Optional, L"true")};
  return list;
}

}  // namespace api::files
