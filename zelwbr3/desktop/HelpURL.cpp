#include "zelwbr3/desktop/HelpURL.h"

#include "zelwbr3/remote/FileURL.h"

#include <algorithm>
#include <memory>

#include <glib.h>

namespace ZELWbr3::Desktop {

using namespace Remote;

namespace {

constexpr std::string_view Usual = "mk:@MSITStore:";
constexpr std::string_view WithPath = "mk:///@MSITStore:";
constexpr std::string_view Separator = "::/";

}  // namespace

std::string HelpURL(std::string_view sCHMPath, std::string_view sObject) {
  std::string sFile;
  for (const char c : sCHMPath) sFile += c == '/' ? "%2F" : EscapePath({&c, 1});
  return std::string(WithPath) + sFile + std::string(Separator) + EscapePath(sObject);
}

std::optional<std::string> ObjectOf(const std::string& sURL, std::string_view sCHMPath) {
  const std::string_view sStart = IsUsualHelpURL(sURL) ? Usual : WithPath;
  if (!sURL.starts_with(sStart)) return {};
  const auto iEnd = std::min(sURL.find_first_of("?#"), sURL.size());
  const std::string sEscaped = sURL.substr(sStart.size(), iEnd - sStart.size());
  // None for what is not escaped rightly, and for an escaped NUL.
  const std::unique_ptr<char, decltype(&g_free)> pPlain(g_uri_unescape_string(sEscaped.c_str(), nullptr), g_free);
  if (pPlain == nullptr) return {};
  const std::string_view sPlain = pPlain.get();
  if (!sPlain.starts_with(sCHMPath)) return {};
  const std::string_view sRest = sPlain.substr(sCHMPath.size());
  if (!sRest.starts_with(Separator)) return {};
  return std::string(sRest.substr(Separator.size()));
}

bool IsUsualHelpURL(std::string_view sURL) { return sURL.starts_with(Usual); }

}  // namespace ZELWbr3::Desktop
