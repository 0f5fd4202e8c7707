#include "engine/os_type.h"

#include "platform/environment.h"

namespace engine {
namespace {

constexpr unsigned kWorkstation = 1;  // VER_NT_WORKSTATION

}  // namespace

COsType::COsType() {
  const platform::OsVersion version = platform::osVersion();
  class_ = classify(version.major, version.minor, version.productType);
}

COsType::Class COsType::classify(unsigned major, unsigned minor, unsigned productType) {
  if (productType != kWorkstation) return Unknown;
  if (major == 6 && minor == 1) return Windows7;
  if (major == 6 && (minor == 2 || minor == 3)) return Windows8;
  if (major == 10 && minor == 0) return Windows10;
  return Unknown;
}

const wchar_t* COsType::text() const {
  switch (class_) {
    case Windows7: return L"7";
    case Windows8: return L"8";
    case Windows10: return L"10";
    case Unknown: break;
  }
  return L"";
}

}  // namespace engine
