#include "engine/log.h"
#include "functions/ini/functions.h"
#include "platform/profile.h"

namespace api::ini {

const Parameters& FunctionIniSetValue::parameters() {
  static const Parameters list = {engine::text<&FunctionIniSetValue::path_>(L"path", Need::NonEmpty),
                                  engine::text<&FunctionIniSetValue::section_>(L"section", Need::NonEmpty),
                                  engine::text<&FunctionIniSetValue::key_>(L"key", Need::NonEmpty),
                                  engine::text<&FunctionIniSetValue::value_>(L"value", Need::NonEmpty)};
  return list;
}

// Creates the file and the section when missing.
void FunctionIniSetValue::execute() {
  clearResult();
  const std::wstring path = expand(path_), section = expand(section_), key = expand(key_), value = expand(value_);
  engine::log(L"iniSetValue in '%s' at '%s\\%s'. value: '%s'", path.c_str(), section.c_str(), key.c_str(),
              value.c_str());
  if (const uint32_t error = platform::writeProfileString(path, section, key, value)) fail(error);
  logEnd();
}

}  // namespace api::ini
