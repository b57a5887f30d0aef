#include "zelwbr3/base/SizeText.h"

namespace ZELWbr3 {

std::string SizeText(std::int64_t lBytes) {
  constexpr const char* Units[] = {"bytes", "KB", "MB", "GB", "TB", "PB"};
  std::size_t iUnit = 0;
  std::int64_t lTenths = lBytes * 10;
  for (; lTenths >= 10240 && iUnit + 1 < std::size(Units); ++iUnit) lTenths = (lTenths + 512) / 1024;
  std::string sText = std::to_string(lTenths / 10);
  if (lTenths < 100 && lTenths % 10 != 0) sText += '.' + std::to_string(lTenths % 10);
  return sText + ' ' + Units[iUnit];
}

}  // namespace ZELWbr3
