#include "engine/os_type.h"

#include <windows.h>

namespace engine {

COsType::COsType() {
  using RtlGetVersionFn = LONG(WINAPI*)(OSVERSIONINFOEXW*);
  OSVERSIONINFOEXW info{};
  info.dwOSVersionInfoSize = sizeof(info);
  HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
  auto rtlGetVersion =
      ntdll ? reinterpret_cast<RtlGetVersionFn>(reinterpret_cast<void*>(GetProcAddress(ntdll, "RtlGetVersion")))
            : nullptr;
  if (rtlGetVersion) rtlGetVersion(&info);
  class_ = classify(info.dwMajorVersion, info.dwMinorVersion, info.wProductType);
}

COsType::Class COsType::classify(unsigned major, unsigned minor, unsigned productType) {
  if (productType != VER_NT_WORKSTATION) return Unknown;
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
