#include "zelwbr3/desktop/Script.h"

namespace ZELWbr3::Desktop {

std::string ScriptText(std::string_view sText) {
  std::string sLiteral;
  sLiteral.reserve(sText.size() + sText.size() / 8 + 2);
  sLiteral += '\'';
  std::size_t iStart = 0;
  for (std::size_t i = 0; i < sText.size(); ++i) {
    const char* sEscape = nullptr;
    switch (sText[i]) {
      case '\\':
        sEscape = "\\\\";
        break;
      case '\'':
        sEscape = "\\'";
        break;
      case '\n':
        sEscape = "\\n";
        break;
      case '\r':
        sEscape = "\\r";
        break;
      case '\0':
        sEscape = "\\x00";
        break;
      default:
        continue;
    }
    sLiteral.append(sText, iStart, i - iStart);
    sLiteral += sEscape;
    iStart = i + 1;
  }
  sLiteral.append(sText, iStart);
  sLiteral += '\'';
  return sLiteral;
}

}  // namespace ZELWbr3::Desktop
