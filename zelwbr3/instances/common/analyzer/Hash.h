#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ZELWbr3::Instances {

/// FNV-1a of 64 bits, as 16 hexadecimal digits: the same on every machine and
/// in every run, and not cryptographic.
inline std::string Hash(std::string_view sText) {
  std::uint64_t lHash = 0xcbf29ce484222325;
  for (const char c : sText) lHash = (lHash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  std::string sDigits;
  for (int iShift = 60; iShift >= 0; iShift -= 4) sDigits += "0123456789abcdef"[lHash >> iShift & 15];
  return sDigits;
}

}  // namespace ZELWbr3::Instances
