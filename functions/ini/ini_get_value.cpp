#include "engine/log.h"
#include "engine/log_lines.h"
#include "functions/ini/functions.h"
#include "platform/profile.h"

namespace api::ini {

namespace {

constexpr engine::LogLine kStart{L"iniGetValue in '%s' at '%s\\%s'. variable: '%s' (default:%s)"};

}  // namespace

const Parameters& FunctionIniGetValue::parameters() {
  static const Parameters list = {engine::text<&FunctionIniGetValue::path_>(L"path", Need::NonEmpty),
                                  engine::text<&FunctionIniGetValue::section_>(L"section", Need::NonEmpty),
                                  engine::text<&FunctionIniGetValue::key_>(L"key", Need::NonEmpty),
                                  engine::variable<&FunctionIniGetValue::var_>(L"var", Need::NonEmpty),
                                  engine::text<&FunctionIniGetValue::default_>(L"default", Need::Optional)};
  return list;
}

// Always succeeds: a missing key, section or file gives the default.
void FunctionIniGetValue::execute() {
  const std::wstring path = expand(path_), section = expand(section_), key = expand(key_), fallback = expand(default_);
  engine::log(kStart, path.c_str(), section.c_str(), key.c_str(), var_.c_str(), fallback.c_str());
  variables().set(var_, platform::profileString(path, section, key, fallback));
  logEnd();
}

const engine::TagDoc FunctionIniGetValue::doc{
    L"Stores in `var` the value of `key` in `section` of the INI file `path`, or `default` (none: the empty text) when the key, the section or the file is missing; all but `var` are expanded when it runs. Windows reads the file: a bare file name is looked for in the Windows directory, quotes around a value are dropped, and a value longer than 10,239 characters is cut there.",
    {kStart, engine::kErrorEnd.as(L"iniGetValue")},
    L"Always success: whatever cannot be read gives `default`.",
    L"<iniGetValue path=\"%enginedir%app.ini\" section=\"update\" key=\"channel\" var=\"channel\" default=\"stable\"/>\n<trace value=\"update channel: %channel%\"/>"};

}  // namespace api::ini
