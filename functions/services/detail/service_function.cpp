#include <windows.h>

#include "engine/log.h"
#include "functions/services/functions.h"

namespace api::services {

const Parameters& ServiceFunction::parameters() {
  static const Parameters list = {engine::text<&ServiceFunction::name_>(L"name", Need::NonEmpty)};
  return list;
}

uint32_t ServiceFunction::failedTo(uint32_t error, StepLine what) const {
  engine::log(what, name().c_str());
  return error;
}

void ServiceFunction::finishWith(uint32_t error) {
  if (error == WAIT_TIMEOUT) {
    fail(L"timeout");
  } else if (error != 0) {
    fail(error);
  }
  logEnd();
}

}  // namespace api::services
