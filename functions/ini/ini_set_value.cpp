#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/ini/functions.h"
#include "platform/profile.h"

namespace api::ini {
namespace {

// Read back for a key that is not there; no value written can equal it.
constexpr const wchar_t* kAbsent = L"\x1\x2";

constexpr engine::LogLine kStart{L"iniSetValue in '%s' at '%s\\%s'. value: '%s'"};

}  // namespace

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
  engine::log(kStart, path.c_str(), section.c_str(), key.c_str(), value.c_str());
  // A recorded run tells a value that is there already from a change.
  if (recording() && platform::profileString(path, section, key, kAbsent) == value) nothingChanged();
  if (const uint32_t error = platform::writeProfileString(path, section, key, value)) fail(error);
  logEnd();
}

const engine::TagDoc FunctionIniSetValue::doc{
    L"Writes `value` as `key` in `section` of the INI file `path`, creating the file and the section when missing and replacing the key's line when present; all four are expanded when it runs and must not be empty as written. Windows writes the file: a new one, or one without a byte-order mark, in the ANSI code page (a character outside it becomes `?`), one with a UTF-16 byte-order mark as UTF-16. Give a full path: a bare file name goes to the Windows directory.",
    {kStart, engine::kErrorEnd.as(L"iniSetValue")},
    L"Error text: the Windows code of the write, e.g. `3` a missing directory, `5` access denied (a read-only file).",
    L"<iniSetValue path=\"C:\\Program Files\\App\\app.ini\" section=\"update\" key=\"lastVersion\" value=\"24.3\">\n  <onerror><trace value=\"app.ini not written: %error%\"/></onerror>\n</iniSetValue>"};

}  // namespace api::ini
