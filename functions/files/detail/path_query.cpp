#include "functions/files/functions.h"

namespace api::files {

const Parameters& PathQuery::parameters() {
  static const Parameters list = {engine::text<&PathQuery::path_>(L"path", Need::NonEmpty)};
  return list;
}

}  // namespace api::files
