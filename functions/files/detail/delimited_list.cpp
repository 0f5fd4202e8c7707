#include "functions/files/detail/delimited_list.h"

namespace api::files {

std::wstring joinDelimited(const std::vector<std::wstring>& entries, const std::wstring& delimiter) {
  std::wstring out;
  for (const std::wstring& entry : entries) {
    out += entry;
    out += delimiter;
  }
  const size_t keep = out.find_last_not_of(delimiter);
  out.resize(keep == std::wstring::npos ? 0 : keep + 1);
  return out;
}

}  // namespace api::files
