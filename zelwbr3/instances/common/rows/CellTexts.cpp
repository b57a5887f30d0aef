#include "zelwbr3/instances/common/rows/CellTexts.h"

#include <algorithm>

namespace ZELWbr3::Instances {

namespace {

bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

std::string Size(std::int64_t lBytes) { return std::to_string(lBytes) + (lBytes == 1 ? " byte" : " bytes"); }

}  // namespace

std::string CellTexts::OfText(std::string sBegin, std::int64_t lBytes) {
  if (lBytes <= static_cast<std::int64_t>(LongestText)) return sBegin;
  std::size_t lEnd = std::min(LongestText, sBegin.size());
  // Not within a character, of which at most three bytes stand before the cut.
  for (int i = 0; i < 3 && lEnd < sBegin.size() && ContinuesCharacter(sBegin[lEnd]); ++i) --lEnd;
  sBegin.resize(lEnd);
  return sBegin + " … (" + Size(lBytes) + ")";
}

std::string CellTexts::OfBlob(std::string_view sBegin, std::int64_t lBytes) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string sText = Size(lBytes);
  for (std::size_t i = 0; i < std::min(sBegin.size(), BlobBytesShown); ++i) {
    const auto byte = static_cast<unsigned char>(sBegin[i]);
    sText += i == 0 ? ": " : " ";
    sText += {kHex[byte >> 4], kHex[byte & 15]};
  }
  return lBytes > static_cast<std::int64_t>(BlobBytesShown) ? sText + " …" : sText;
}

}  // namespace ZELWbr3::Instances
