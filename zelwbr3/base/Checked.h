#pragma once

#include <concepts>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace ZELWbr3 {

/// A signed whole number of 16 or 32 bits whose arithmetic never wraps.
///
/// Converts to and from the built-in integers; a value that does not fit, the
/// result of +, - or * included, raises std::overflow_error. Instance figures
/// have this type, so a size computed from inconsistent figures never shows up
/// as a huge wrapped number.
template <std::signed_integral T>
requires(sizeof(T) <= 4) class Checked {
 public:
  constexpr Checked() = default;

  template <std::integral From>
  constexpr Checked(From value) : m_value(static_cast<T>(value)) {
    if constexpr (!std::same_as<From, bool>) {
      if (!std::in_range<T>(value)) {
        throw std::overflow_error("Overflow: " + std::to_string(value) + " does not fit into " +
                                  std::to_string(8 * sizeof(T)) + " bits");
      }
    }
  }

  constexpr operator T() const { return m_value; }

  // Templates, so that overload resolution for "a - 1" and "1 - a" prefers these
  // to the built-in operator on the converted value.
  template <typename Other>
  friend constexpr Checked operator+(Checked a, Other b) {
    return Wide(a) + Wide(b);
  }
  template <typename Other>
  friend constexpr Checked operator-(Checked a, Other b) {
    return Wide(a) - Wide(b);
  }
  template <typename Other>
  friend constexpr Checked operator*(Checked a, Other b) {
    return Wide(a) * Wide(b);
  }
  template <std::integral Other>
  friend constexpr Checked operator+(Other a, Checked b) {
    return Wide(a) + Wide(b);
  }
  template <std::integral Other>
  friend constexpr Checked operator-(Other a, Checked b) {
    return Wide(a) - Wide(b);
  }
  template <std::integral Other>
  friend constexpr Checked operator*(Other a, Checked b) {
    return Wide(a) * Wide(b);
  }

  template <typename Other>
  constexpr Checked& operator+=(Other b) {
    return *this = *this + b;
  }
  template <typename Other>
  constexpr Checked& operator-=(Other b) {
    return *this = *this - b;
  }
  constexpr Checked& operator++() { return *this += 1; }

 private:
  // Sums, differences and products of two 32-bit values fit into 64 bits.
  static constexpr std::int64_t Wide(Checked value) { return value.m_value; }

  T m_value = 0;
};

using Integer = Checked<std::int16_t>;
using Long = Checked<std::int32_t>;

}  // namespace ZELWbr3
