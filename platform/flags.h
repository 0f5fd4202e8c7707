#pragma once
// Enums whose values are bits that combine: `a | b`, and has(set, one). An
// enum opts in with `template <> inline constexpr bool kIsFlagSet<E> = true;`.
#include <type_traits>

namespace platform {

template <class E>
inline constexpr bool kIsFlagSet = false;

template <class E>
requires kIsFlagSet<E>
constexpr E operator|(E a, E b) {
  using Bits = std::underlying_type_t<E>;
  return static_cast<E>(static_cast<Bits>(a) | static_cast<Bits>(b));
}

template <class E>
requires kIsFlagSet<E>
constexpr bool has(E set, E one) {
  using Bits = std::underlying_type_t<E>;
  return (static_cast<Bits>(set) & static_cast<Bits>(one)) != 0;
}

}  // namespace platform
