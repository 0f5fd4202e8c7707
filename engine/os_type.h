#pragma once
#include <string>

namespace engine {

// Classifies the running Windows version for the `os` variable.
class COsType {
 public:
  enum Class { Unknown = 0, Windows7 = 2, Windows8 = 3, Windows10 = 4 };

  // Reads the version with RtlGetVersion, which, unlike GetVersionEx, is not
  // capped by the program's manifest.
  COsType();
  // "7", "8", "10", or empty for servers and other versions.
  const wchar_t* text() const;

  static Class classify(unsigned major, unsigned minor, unsigned productType);

 private:
  Class class_ = Unknown;
};

inline std::wstring osClassText() { return COsType().text(); }

}  // namespace engine
