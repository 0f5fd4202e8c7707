// The C runtime's wide printf conventions on top of the C library's: msvcrt
// reads %s as a wide string, %hs as a narrow one, %c as a wide character and
// prints %p as 16 upper-case hex digits; glibc reads %s as narrow. Each
// conversion is rewritten and formatted on its own, so every argument is taken
// with the type the Windows build passes.
#include "platform/format.h"

#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <vector>

namespace platform {
namespace {

template <class T>
void appendFormatted(std::wstring& out, const std::wstring& spec, T value) {
  std::vector<wchar_t> buffer(128);
  for (;;) {
    const int length = std::swprintf(buffer.data(), buffer.size(), spec.c_str(), value);
    if (length >= 0 && static_cast<size_t>(length) < buffer.size()) {
      out.append(buffer.data(), static_cast<size_t>(length));
      return;
    }
    if (buffer.size() >= (size_t{1} << 24)) return;  // a width no log line needs
    buffer.resize(buffer.size() * 8);
  }
}

// Narrow text as msvcrt's %hs shows it in the "C" locale: one character per byte.
std::wstring widen(const char* text) {
  std::wstring out;
  for (; *text; ++text) out.push_back(static_cast<wchar_t>(static_cast<unsigned char>(*text)));
  return out;
}

}  // namespace

void formatInto(std::wstring& out, const wchar_t* format, va_list args) {
  out.clear();
  va_list ap;
  va_copy(ap, args);
  const wchar_t* p = format;
  while (*p) {
    if (*p != L'%') {
      out.push_back(*p++);
      continue;
    }
    const wchar_t* start = p++;
    if (*p == L'%') {
      out.push_back(*p++);
      continue;
    }
    std::wstring spec = L"%";
    while (*p && std::wcschr(L"-+ #0", *p)) spec.push_back(*p++);
    const auto number = [&] {
      if (*p == L'*') {
        spec += std::to_wstring(va_arg(ap, int));
        ++p;
      }
      while (*p >= L'0' && *p <= L'9') spec.push_back(*p++);
    };
    number();
    if (*p == L'.') {
      spec.push_back(*p++);
      number();
    }
    // 'h' short or narrow, 'l' long or wide, 'q' 64-bit, 'L' long double.
    char size = 0;
    if (*p == L'h') {
      size = 'h';
      if (*++p == L'h') ++p;
    } else if (*p == L'l') {
      size = *++p == L'l' ? (++p, 'q') : 'l';
    } else if (*p == L'w') {
      size = 'l';
      ++p;
    } else if (*p == L'L') {
      size = 'L';
      ++p;
    } else if (std::wcsncmp(p, L"I64", 3) == 0) {
      size = 'q';
      p += 3;
    } else if (std::wcsncmp(p, L"I32", 3) == 0) {
      p += 3;
    } else if (*p == L'I' || *p == L'z') {
      size = 'q';
      ++p;
    }
    const wchar_t conversion = *p ? *p++ : L'\0';
    switch (conversion) {
      case L'd':
      case L'i':
        if (size == 'q')
          appendFormatted(out, spec + L"lld", va_arg(ap, long long));
        else if (size == 'l')
          appendFormatted(out, spec + L"ld", va_arg(ap, long));
        else
          appendFormatted(out, spec + L"d", va_arg(ap, int));
        break;
      case L'u':
      case L'o':
      case L'x':
      case L'X':
        if (size == 'q')
          appendFormatted(out, spec + L"ll" + conversion, va_arg(ap, unsigned long long));
        else if (size == 'l')
          appendFormatted(out, spec + L"l" + conversion, va_arg(ap, unsigned long));
        else
          appendFormatted(out, spec + conversion, va_arg(ap, unsigned));
        break;
      case L'c':
        appendFormatted(out, spec + L"lc",
                        size == 'h' ? static_cast<wint_t>(static_cast<unsigned char>(va_arg(ap, int)))
                                    : static_cast<wint_t>(va_arg(ap, unsigned)));
        break;
      case L's': {
        std::wstring text;
        if (size == 'h') {
          const char* narrow = va_arg(ap, const char*);
          text = narrow ? widen(narrow) : L"(null)";
        } else {
          const wchar_t* wide = va_arg(ap, const wchar_t*);
          text = wide ? wide : L"(null)";
        }
        appendFormatted(out, spec + L"ls", text.c_str());
        break;
      }
      case L'p':
        appendFormatted(out, std::wstring(L"%016llX"),
                        static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(va_arg(ap, void*))));
        break;
      case L'e':
      case L'E':
      case L'f':
      case L'F':
      case L'g':
      case L'G':
      case L'a':
      case L'A':
        if (size == 'L')
          appendFormatted(out, spec + L"L" + conversion, va_arg(ap, long double));
        else
          appendFormatted(out, spec + conversion, va_arg(ap, double));
        break;
      case L'n':
        va_arg(ap, int*);  // counts are never written back
        break;
      default:  // not a conversion: kept as written
        out.append(start, p);
        break;
    }
  }
  va_end(ap);
}

}  // namespace platform
