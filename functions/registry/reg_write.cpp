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

// Whether the value is there already with this type and these bytes.
bool FunctionRegWrite::holds(const std::wstring& key, const std::wstring& value, const std::vector<uint8_t>& bytes) const {
  platform::UniqueKey reading;
  platform::RegistryData current;
  return platform::openKey(rootKey(), key, platform::KeyAccess::Read, reading) == 0 &&
         platform::queryValue(reading, value, current) == 0 && static_cast<uint32_t>(current.type) == type_ &&
         current.bytes == bytes;
}

// Writes into an existing key only: a missing key fails with the open's code.
void FunctionRegWrite::execute() {
  clearResult();
  const std::wstring key = this->key(), value = expand(value_), data = expand(data_);
  engine::log(L"RegWrite function called for %p\\%s\\%s. Data:'%s', type=%d", root(), key.c_str(), value.c_str(),
              data.c_str(), type_);
  platform::UniqueKey opened;
  std::vector<uint8_t> bytes;
  uint32_t error = platform::openKey(rootKey(), key, platform::KeyAccess::Write, opened);
  if (error == 0) error = detail::textToData(type_, data, bytes);
  if (error == 0 && recording() && holds(key, value, bytes)) nothingChanged();
  if (error == 0) error = platform::setValue(opened, value, static_cast<platform::ValueType>(type_), bytes);
  if (error != 0) fail(error);
  logEnd(L"RegWrite");
}

const engine::TagDoc FunctionRegWrite::doc{
    L"Writes `data` as the value `value` (empty: the default value) of the existing key `root`\\`key`, converted from its text form by `type`: `REG_SZ`; `REG_EXPAND_SZ` as given (write `%%` for a `%` to keep); `REG_BINARY` from hex pairs in either case, an odd last digit ignored; `REG_DWORD` and `REG_QWORD` from leading decimal digits, a negative number in two's complement, one beyond the range clamped; `REG_MULTI_SZ` with `|` between the strings (`data=\"\"`: an empty list). `type` is taken as written and logged as its number (`0` for an unknown name); `key`, `value` and `data` are expanded when it runs. A missing key is not created; the end line is tagged `RegWrite`.",
    L"RegWrite function called for %p\\%s\\%s. Data:'%s', type=%d\nRegWrite function end with %s. err:'%s'",
    L"Error text: `2` a missing key, `5` access denied, `111` binary text with a character that is no hex digit, `1630` a `type` that is not one of the six names. A failed write leaves the value as it was.",
    L"<regCreateKey root=\"HKEY_LOCAL_MACHINE\" key=\"SOFTWARE\\Contoso\\App\"/>\n<regWrite root=\"HKEY_LOCAL_MACHINE\" key=\"SOFTWARE\\Contoso\\App\" value=\"Version\" data=\"24.3\" type=\"REG_SZ\"/>\n<regWrite root=\"HKEY_LOCAL_MACHINE\" key=\"SOFTWARE\\Contoso\\App\" value=\"Paths\" data=\"C:\\App|D:\\Data\" type=\"REG_MULTI_SZ\"/>"};

}  // namespace api::registry
