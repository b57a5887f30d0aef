#include "zelwbr3/remote/FileType.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ZELWbr3::Remote {

std::string FileType(std::string_view sName) {
  static constexpr std::array<std::pair<std::string_view, const char*>, 15> Types = {{{".htm", "text/html"},
                                                                                      {".html", "text/html"},
                                                                                      {".css", "text/css"},
                                                                                      {".js", "text/javascript"},
                                                                                      {".txt", "text/plain"},
                                                                                      {".csv", "text/csv"},
                                                                                      {".json", "application/json"},
                                                                                      {".png", "image/png"},
                                                                                      {".gif", "image/gif"},
                                                                                      {".jpg", "image/jpeg"},
                                                                                      {".jpeg", "image/jpeg"},
                                                                                      {".svg", "image/svg+xml"},
                                                                                      {".bmp", "image/bmp"},
                                                                                      {".ico", "image/x-icon"},
                                                                                      {".webp", "image/webp"}}};
  std::string sEnding(sName.substr(std::min(sName.rfind('.'), sName.size())));
  std::ranges::transform(sEnding, sEnding.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; });
  const auto it = std::ranges::find(Types, sEnding, [](const auto& oType) { return oType.first; });
  return it == Types.end() ? "application/octet-stream" : it->second;
}

}  // namespace ZELWbr3::Remote
