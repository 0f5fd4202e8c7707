#include "engine/log.h"
#include "functions/services/functions.h"
#include "platform/errors.h"

namespace api::services {

const Parameters& ServiceFunction::parameters() {
  static const Parameters list = {engine::text<&ServiceFunction::name_>(L"name", Need::NonEmpty)};
  return list;
}

uint32_t ServiceFunction::failedTo(uint32_t error, const wchar_t* what) const {
  engine::log(L"%s %s", name().c_str(), what);
  return error;
}

void ServiceFunction::finishWith(uint32_t error) {
  if (error == platform::kErrorWaitTimeout) {
    fail(L"timeout");
  } else if (error != 0) {
    fail(error);
  }
  logEnd();
}

}  // namespace api::services
