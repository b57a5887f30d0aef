#include "zelwbr3/web/Secrets.h"

#include <openssl/crypto.h>
#include <openssl/rand.h>
#include <openssl/sha.h>

#include <array>
#include <stdexcept>

namespace ZELWbr3::Web {

std::string MakeSecret() {
  constexpr std::string_view Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
  std::array<unsigned char, 32> bytes{};
  if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1) {
    throw std::runtime_error("The system's random generator does not work");
  }
  std::string sSecret;
  unsigned iBits = 0;
  int iCount = 0;
  for (const unsigned char iByte : bytes) {
    iBits = iBits << 8 | iByte;
    for (iCount += 8; iCount >= 6; iCount -= 6) sSecret += Alphabet[iBits >> (iCount - 6) & 63];
  }
  return sSecret + Alphabet[iBits << (6 - iCount) & 63];
}

bool IsSameSecret(std::string_view sText, std::string_view sOther) {
  return sText.size() == sOther.size() && CRYPTO_memcmp(sText.data(), sOther.data(), sText.size()) == 0;
}

std::string Digest(std::string_view sText) {
  std::array<unsigned char, SHA256_DIGEST_LENGTH> digest{};
  SHA256(reinterpret_cast<const unsigned char*>(sText.data()), sText.size(), digest.data());
  constexpr std::string_view Hex = "0123456789abcdef";
  std::string sDigest;
  for (std::size_t i = 0; i < 16; ++i) sDigest += {Hex[digest[i] >> 4], Hex[digest[i] & 15]};
  return sDigest;
}

}  // namespace ZELWbr3::Web
