#include "functions/processes/detail/process_name.h"

#include "platform/processes.h"

namespace api::processes::detail {

std::wstring normaliseProcessName(const std::wstring& name) {
  // Doubling a leading pair first lets the collapse below give it back.
  const std::wstring text = name.starts_with(L"\\\\") ? L"\\\\" + name : name;
  std::wstring out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    out.push_back(text[i]);
    if (text[i] == L'\\' && i + 1 < text.size() && text[i + 1] == L'\\') ++i;
  }
  return out;
}

std::vector<uint32_t> processesNamed(const std::wstring& name) {
  std::vector<uint32_t> ids;
  if (platform::findProcesses(name, ids) != 0) ids.clear();
  return ids;
}

}  // namespace api::processes::detail
