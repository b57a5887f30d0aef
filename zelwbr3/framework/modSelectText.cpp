#include "zelwbr3/framework/modSelectText.h"

#include <algorithm>

namespace ZELWbr3::modSelectText {

void SelectText(TextBox& oTextBox) {
  const std::string sText = oTextBox.Text();
  // Characters, not bytes: all but the continuation bytes of UTF-8.
  const auto lLength = std::ranges::count_if(sText, [](char c) { return (c & 0xC0) != 0x80; });
  oTextBox.SelStart(0);
  oTextBox.SelLength(lLength);
}

}  // namespace ZELWbr3::modSelectText
