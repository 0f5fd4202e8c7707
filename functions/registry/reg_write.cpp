#include "engine/log.h"
#include "functions/registry/detail/text_forms.h"
#include "functions/registry/functions.h"
#include "platform/registry.h"

namespace api::registry {

const Parameters& FunctionRegWrite::parameters() {
  static const Parameters list = engine::joined(
      {engine::text<&FunctionRegWrite::value_>(L"value"), engine::text<&FunctionRegWrite::data_>(L"data"),
       engine::literal<&FunctionRegWrite::typeName_>(L"type")},
      KeyErrorFunction::parameters());
  return list;
}

// An unknown type name is accepted here and refused when the function runs.
bool FunctionRegWrite::readAttributes() {
  if (!readParameters()) return false;
  type_ = detail::typeCode(typeName_);
  return true;
}

// Writes into an existing key only: a missing key fails with the open's code.
void FunctionRegWrite::execute() {
  clearResult();
  const std::wstring key = this->key(), value = expand(value_), data = expand(data_);
  engine::log(L"RegWrite function called for %p\\%s\\%s. Data:'%s', type=%d", root(), key.c_str(), value.c_str(),
              data.c_str(), type_);
  platform::UniqueKey opened;
  std::vector<uint8_t> bytes;
  uint32_t error = platform::openKey(root(), key, KEY_SET_VALUE, opened);
  if (error == 0) error = detail::textToData(type_, data, bytes);
  if (error == 0) error = platform::setValue(opened.get(), value, type_, bytes);
  if (error != 0) fail(error);
  logEnd(L"RegWrite");
}

}  // namespace api::registry
