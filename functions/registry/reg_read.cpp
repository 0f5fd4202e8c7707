#include "engine/log.h"
#include "functions/registry/detail/text_forms.h"
#include "functions/registry/functions.h"
#include "platform/environment.h"
#include "platform/error_text.h"
#include "platform/errors.h"
#include "platform/registry.h"

namespace api::registry {
namespace {

// The value's text form; 0 or the Windows error code.
uint32_t readText(platform::RootKey root, const std::wstring& key, const std::wstring& value, std::wstring& text) {
  platform::UniqueKey opened;
  if (const uint32_t error = platform::openKey(root, key, platform::KeyAccess::Read, opened)) return error;
  platform::RegistryData data;
  if (const uint32_t error = platform::queryValue(opened, value, data)) return error;
  std::optional<std::wstring> converted = detail::dataToText(static_cast<uint32_t>(data.type), data.bytes);
  if (!converted) return platform::kErrorUnsupportedType;
  if (data.type == platform::ValueType::ExpandSz) {
    platform::clearLastError();
    converted = platform::expandEnvironment(*converted);
    if (!converted) return platform::lastErrorOr(platform::kErrorInvalidData);
  }
  text = std::move(*converted);
  return 0;
}

}  // namespace

const Parameters& FunctionRegRead::parameters() {
  static const Parameters list = engine::joined({engine::variable<&FunctionRegRead::var_>(L"var", Need::NonEmpty),
                                                 engine::text<&FunctionRegRead::value_>(L"value")},
                                                KeyErrorFunction::parameters());
  return list;
}

void FunctionRegRead::execute() {
  clearResult();
  const std::wstring key = this->key(), value = expand(value_);
  engine::log(L"RegRead function called for %p\\%s\\%s store to %s", root(), key.c_str(), value.c_str(), var_.c_str());
  std::wstring text;
  if (const uint32_t error = readText(rootKey(), key, value, text)) {
    fail(error);
  } else {
    variables().set(var_, std::move(text));
  }
  logEnd(L"RegRead");
}

const engine::TagDoc FunctionRegRead::doc{
    L"Stores in `var` the text form of the value `value` (empty: the key's default value) of `root`\\`key`: `REG_SZ` as it is, `REG_EXPAND_SZ` with environment references expanded, `REG_BINARY` as lower-case hex pairs, `REG_DWORD` and `REG_QWORD` as unsigned decimal, `REG_MULTI_SZ` joined with `|` (empty strings at the end dropped). `root` is one of the five predefined keys written exactly (the log shows its handle value, `FFFFFFFF80000002` for `HKEY_LOCAL_MACHINE`); `key` and `value` are expanded when it runs. On failure `var` keeps what it had; the end line is tagged `RegRead`.",
    L"RegRead function called for %p\\%s\\%s store to %s\nRegRead function end with %s. err:'%s'",
    L"Error text: `2` a missing key or value, `5` access denied, `1630` a type without a text form (`REG_NONE`, `REG_LINK`), or another Windows code of the read.",
    L"<regRead root=\"HKEY_LOCAL_MACHINE\" key=\"SOFTWARE\\Contoso\\App\" value=\"Version\" var=\"installed\">\n  <onerrorspec err=\"2\"><assign var=\"installed\" value=\"0\"/></onerrorspec>\n</regRead>"};

}  // namespace api::registry
