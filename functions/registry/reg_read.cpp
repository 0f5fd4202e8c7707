#include "engine/log.h"
#include "functions/registry/detail/text_forms.h"
#include "functions/registry/functions.h"
#include "platform/environment.h"
#include "platform/error_text.h"
#include "platform/registry.h"

namespace api::registry {
namespace {

// The value's text form; 0 or the Windows error code.
uint32_t readText(HKEY root, const std::wstring& key, const std::wstring& value, std::wstring& text) {
  platform::UniqueKey opened;
  if (const uint32_t error = platform::openKey(root, key, KEY_QUERY_VALUE, opened)) return error;
  platform::RegistryData data;
  if (const uint32_t error = platform::queryValue(opened.get(), value, data)) return error;
  std::optional<std::wstring> converted = detail::dataToText(data.type, data.bytes);
  if (!converted) return ERROR_UNSUPPORTED_TYPE;
  if (data.type == detail::ExpandSz) {
    platform::clearLastError();
    converted = platform::expandEnvironment(*converted);
    if (!converted) return platform::lastErrorOr(ERROR_INVALID_DATA);
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
  if (const uint32_t error = readText(root(), key, value, text)) {
    fail(error);
  } else {
    variables().set(var_, std::move(text));
  }
  logEnd(L"RegRead");
}

}  // namespace api::registry
