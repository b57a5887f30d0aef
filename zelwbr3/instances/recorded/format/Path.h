#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ZELWbr3::Recorded {

/// The path of a value in a recording, one link a level, which costs nothing
/// until an error needs its text. Links live on the stack of the function that descends.
class Path {
 public:
  Path() = default;
  Path(const Path& oParent, std::string_view sKey) : m_pParent(&oParent), m_sKey(sKey) {}
  /// Entries count from 0, as in any tool that reads JSON.
  Path(const Path& oParent, std::size_t lIndex) : m_pParent(&oParent), m_lIndex(lIndex), m_bIndex(true) {}

  /// Such as "Database.DataArea.Volumes.Items[2].Size"; empty for the file.
  std::string Text() const;

 private:
  const Path* m_pParent = nullptr;
  std::string_view m_sKey;
  std::size_t m_lIndex = 0;
  bool m_bIndex = false;
};

/// Members joined by ".".
inline std::string Join(std::string_view sPath, std::string_view sName) {
  std::string sJoined(sPath);
  if (!sJoined.empty()) sJoined += '.';
  return sJoined += sName;
}

/// A text from the file as an error message shows it: in quotes, on one line,
/// shortened.
std::string Quoted(std::string_view sText);

}  // namespace ZELWbr3::Recorded
