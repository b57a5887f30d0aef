#pragma once

/// Key codes of document events.
namespace ZELWbr3::KeyCode {

inline constexpr int Enter = 13;
inline constexpr int Escape = 27;
inline constexpr int Space = 32;
inline constexpr int F5 = 116;

}  // namespace ZELWbr3::KeyCode
