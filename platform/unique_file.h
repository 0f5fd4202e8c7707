#pragma once
// Owner of a C runtime FILE*, closed on every path out.
#include <cstdio>
#include <memory>

namespace platform {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using UniqueFile = std::unique_ptr<std::FILE, FileCloser>;

}  // namespace platform
