#pragma once
// A log line's template, written once: the code logs with it and the tag's
// description shows it. Templates follow the C runtime's wide printf (%s a
// wide string, %hs a narrow one, %d an integer, %p a pointer).
#include <cstdint>
#include <initializer_list>
#include <type_traits>

namespace engine {

struct LogLine {
  const wchar_t* format;
  // What the reference shows in place of a leading "%s" (the subject the code
  // logs there); nullptr shows the template as it is.
  const wchar_t* subject = nullptr;

  // This template as the tag `tag` logs it.
  constexpr LogLine as(const wchar_t* tag) const { return {format, tag}; }
};

namespace format_check {

enum class Arg : uint8_t { Wide, Narrow, Integer, Pointer, Other };

template <class T>
consteval Arg argOf() {
  using U = std::remove_cv_t<T>;
  if constexpr (std::is_same_v<U, const wchar_t*> || std::is_same_v<U, wchar_t*>) {
    return Arg::Wide;
  } else if constexpr (std::is_same_v<U, const char*> || std::is_same_v<U, char*>) {
    return Arg::Narrow;
  } else if constexpr (sizeof(U) <= 4 && (std::is_integral_v<U> || std::is_enum_v<U>)) {
    return Arg::Integer;
  } else if constexpr (std::is_pointer_v<U>) {
    return Arg::Pointer;
  } else {
    return Arg::Other;
  }
}

// Not constexpr: reaching it in a check stops the compilation there.
void templateDoesNotMatchItsArguments();

consteval bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// Each conversion of `format` against the kind of the argument it takes.
consteval void check(const wchar_t* format, std::initializer_list<Arg> args) {
  const Arg* next = args.begin();
  for (const wchar_t* at = format; *at; ++at) {
    if (*at != L'%') continue;
    if (*++at == L'%') continue;
    while (*at == L'-' || *at == L'+' || *at == L' ' || *at == L'#' || *at == L'0') ++at;
    while (isDigit(*at) || *at == L'.') ++at;
    const bool narrow = *at == L'h';
    if (narrow || *at == L'l' || *at == L'w') ++at;
    Arg wanted = Arg::Other;
    switch (*at) {
      case L's': wanted = narrow ? Arg::Narrow : Arg::Wide; break;
      case L'd':
      case L'i':
      case L'u':
      case L'x':
      case L'X':
      case L'c': wanted = Arg::Integer; break;
      case L'p': wanted = Arg::Pointer; break;
      default: templateDoesNotMatchItsArguments();
    }
    if (next == args.end() || *next != wanted) templateDoesNotMatchItsArguments();
    ++next;
  }
  if (next != args.end()) templateDoesNotMatchItsArguments();
}

}  // namespace format_check

// A template checked when the program is compiled against the arguments
// logged with it: a conversion without its argument, an argument of another
// kind or one too many does not compile.
template <class... Args>
class CheckedFormat {
 public:
  consteval CheckedFormat(const wchar_t* format) : format_(format) {
    format_check::check(format, {format_check::argOf<Args>()...});
  }
  consteval CheckedFormat(LogLine line) : CheckedFormat(line.format) {}
  const wchar_t* text() const { return format_; }

 private:
  const wchar_t* format_;
};

}  // namespace engine
