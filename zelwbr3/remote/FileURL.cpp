#include "zelwbr3/remote/FileURL.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

namespace ZELWbr3::Remote {

namespace {

constexpr std::string_view SerialName = "zelwbr3=";

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// What stands for itself in the path of a URL.
bool IsPlain(char c) {
  return IsLetter(c) || IsDigit(c) || std::string_view("/-._~").find(c) != std::string_view::npos;
}

bool HasDrive(std::string_view sPath) { return sPath.size() > 1 && IsLetter(sPath[0]) && sPath[1] == ':'; }

/// Where the serial's name stands in a URL, or npos.
std::size_t FindSerial(std::string_view sURL) {
  const auto iName = sURL.rfind(SerialName);
  const bool bFound =
      iName != std::string_view::npos && iName > 0 && (sURL[iName - 1] == '?' || sURL[iName - 1] == '&');
  return bFound ? iName : std::string_view::npos;
}

}  // namespace

std::string SchemeOf(std::string_view sURL) {
  const auto iColon = sURL.find(':');
  if (iColon == std::string_view::npos || iColon < 2 || !IsLetter(sURL.front())) return {};
  std::string sScheme(sURL.substr(0, iColon));
  for (char& c : sScheme) {
    if (!IsLetter(c) && !IsDigit(c) && c != '+' && c != '-' && c != '.') return {};
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return sScheme;
}

std::string EscapePath(std::string_view sPath) {
  static constexpr char Hex[] = "0123456789ABCDEF";
  std::string sEscaped;
  for (const char c : sPath) {
    if (IsPlain(c)) {
      sEscaped += c;
    } else {
      const auto iByte = static_cast<unsigned char>(c);
      sEscaped += {'%', Hex[iByte >> 4], Hex[iByte & 15]};
    }
  }
  return sEscaped;
}

std::string FilePath(std::string_view sPathOrURL) {
  if (!SchemeOf(sPathOrURL).empty()) return {};
  std::string sPath(sPathOrURL);
  std::ranges::replace(sPath, '\\', '/');
  return HasDrive(sPath) || sPath.starts_with('/') ? sPath : std::filesystem::absolute(sPath).string();
}

std::string MakeURL(std::string_view sPathOrURL) {
  const std::string sPath = FilePath(sPathOrURL);
  if (sPath.empty()) return std::string(sPathOrURL);
  return HasDrive(sPath) ? "file:///" + sPath.substr(0, 2) + EscapePath(std::string_view(sPath).substr(2))
                         : "file://" + EscapePath(sPath);
}

std::string WithSerial(std::string_view sURL, std::uint32_t iSerial) {
  const auto iFragment = std::min(sURL.find('#'), sURL.size());
  std::string sResult(sURL.substr(0, iFragment));
  sResult += sResult.find('?') == std::string::npos ? '?' : '&';
  sResult += SerialName;
  sResult += std::to_string(iSerial);
  sResult += sURL.substr(iFragment);
  return sResult;
}

std::string WithoutSerial(std::string_view sURL) {
  const auto iName = FindSerial(sURL);
  if (iName == std::string_view::npos) return std::string(sURL);
  const auto iEnd = std::min(sURL.find('#', iName), sURL.size());
  return std::string(sURL.substr(0, iName - 1)) + std::string(sURL.substr(iEnd));
}

std::uint32_t SerialOf(std::string_view sURL) {
  std::uint32_t iSerial = 0;
  if (const auto iName = FindSerial(sURL); iName != std::string_view::npos) {
    std::from_chars(sURL.data() + iName + SerialName.size(), sURL.data() + sURL.size(), iSerial);
  }
  return iSerial;
}

}  // namespace ZELWbr3::Remote
