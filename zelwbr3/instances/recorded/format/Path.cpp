#include "zelwbr3/instances/recorded/format/Path.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace ZELWbr3::Recorded {

namespace {

constexpr std::size_t MaxQuoted = 60;

// A key that could not be told from the path around it is shown in quotes.
bool IsPlain(std::string_view sKey) {
  return !sKey.empty() && sKey.size() <= MaxQuoted && std::all_of(sKey.begin(), sKey.end(), [](unsigned char cChar) {
    return (cChar >= '0' && cChar <= '9') || (cChar >= 'A' && cChar <= 'Z') || (cChar >= 'a' && cChar <= 'z') ||
           cChar == '_';
  });
}

}  // namespace

std::string Path::Text() const {
  if (m_pParent == nullptr) return {};
  const std::string sParent = m_pParent->Text();
  if (m_bIndex) return sParent + "[" + std::to_string(m_lIndex) + "]";
  return Join(sParent, IsPlain(m_sKey) ? std::string(m_sKey) : Quoted(m_sKey));
}

std::string Quoted(std::string_view sText) {
  const nlohmann::json oText(std::string(sText.substr(0, MaxQuoted)));
  // Replacing takes care of a character that was cut in two.
  std::string sQuoted = oText.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  return sText.size() > MaxQuoted ? sQuoted + "..." : sQuoted;
}

}  // namespace ZELWbr3::Recorded
