#pragma once

#include <string>
#include <string_view>

namespace ZELWbr3::Desktop {

class DesktopPlatform;

/// What a page gives away of its lists and charts, piece by piece (html/export.js): put on the
/// clipboard, or into a file that the user chooses. What cannot be written is said in
/// a message box, and the old file is still there.
class ListExport {
 public:
  enum class Wish { None, Print };

  explicit ListExport(DesktopPlatform& oPlatform) : m_oPlatform(oPlatform) {}

  /// Takes the next piece. What can only be done by the browser is answered.
  Wish Take(std::string_view sPiece);

 private:
  DesktopPlatform& m_oPlatform;
  std::string m_sName;
  std::string m_sText;
};

}  // namespace ZELWbr3::Desktop
