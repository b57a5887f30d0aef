#pragma once

/// Picture numbers of the pages' command-list items: indexes into the host's
/// image resource. A host without a picture only shows the text.
namespace ZELWbr3::modPicture {

inline constexpr int Admin = 40;
inline constexpr int Offline = 41;
inline constexpr int Online = 42;
inline constexpr int RestartUntil = 109;
inline constexpr int Close = 110;
inline constexpr int ReadMore = 111;
inline constexpr int ReadAll = 112;
inline constexpr int Start = 113;
inline constexpr int Stop = 114;
inline constexpr int Delete = 115;

}  // namespace ZELWbr3::modPicture
