#pragma once
// Path text: the one joiner and the splits every caller shares. Pure text
// work, so it builds natively too.
#include <string>
#include <string_view>

namespace platform {

inline bool isSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

// Whether `path` names a file by its full path (C:\dir\file, \\server\share\file),
// not by a bare name or a path relative to the current directory or drive.
inline bool isFullPath(std::wstring_view path) {
  if (path.size() >= 3 && path[1] == L':' && isSeparator(path[2])) return true;
  return path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1]);
}

// left + "\" + right, without doubling a separator at the seam.
inline std::wstring joinPath(std::wstring_view left, std::wstring_view right) {
  while (!right.empty() && isSeparator(right.front())) right.remove_prefix(1);
  std::wstring out;
  out.reserve(left.size() + right.size() + 1);
  out.append(left);
  if (out.empty() || !isSeparator(out.back())) out.push_back(L'\\');
  out.append(right);
  return out;
}

// The path without its last component ("" when there is none).
inline std::wstring parentPath(std::wstring_view path) {
  const size_t cut = path.find_last_of(L"\\/");
  return cut == std::wstring_view::npos ? std::wstring() : std::wstring(path.substr(0, cut));
}

// `name` in the directory of `path`'s last component (of a file, or of the
// wildcard pattern that listed `name`); a path without a directory part
// leaves `name` relative to the current directory.
inline std::wstring siblingPath(std::wstring_view path, std::wstring_view name) {
  const std::wstring directory = parentPath(path);
  return directory.empty() ? std::wstring(name) : joinPath(directory, name);
}

// The last component.
inline std::wstring_view fileName(std::wstring_view path) {
  const size_t cut = path.find_last_of(L"\\/");
  return cut == std::wstring_view::npos ? path : path.substr(cut + 1);
}

}  // namespace platform
