#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ZELWbr3::Instances {

/// How pages show values that they do not show whole.
struct CellTexts {
  /// Bytes of a text; what is longer is cut.
  static constexpr std::size_t LongestText = std::size_t{1} << 20;
  static constexpr std::size_t BlobBytesShown = 16;

  /// sBegin is the text, or at least as much of one of lBytes as is shown.
  static std::string OfText(std::string sBegin, std::int64_t lBytes);
  static std::string OfText(std::string sText) {
    const auto lBytes = static_cast<std::int64_t>(sText.size());
    return OfText(std::move(sText), lBytes);
  }
  /// The size and the first bytes, which sBegin holds.
  static std::string OfBlob(std::string_view sBegin, std::int64_t lBytes);
};

}  // namespace ZELWbr3::Instances
