#include "engine/log.h"
#include "functions/services/functions.h"
#include "platform/errors.h"

namespace api::services {

const Parameters& ServiceFunction::parameters() {
  static const Parameters list = {engine::text<&ServiceFunction::name_>(L"name", Need::NonEmpty)};
  return list;
}

uint32_t ServiceFunction::failedTo(uint32_t error, StepLine what) const {
  engine::log(what, name());
  return error;
}

}  // namespace api::services
