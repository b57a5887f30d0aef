#include "zelwbr3/framework/modZELError.h"

namespace ZELWbr3::modZELError {

namespace {

void ShowText(MessageBox& oBox, const std::string& sText, const std::string& sTitle) {
  oBox.Show(sText, sTitle, MessageBox::Buttons::OK, MessageBox::Icon::Exclamation);
}

}  // namespace

void ShowError(MessageBox& oBox, const ZELLib3::Error& oError, const std::string& sTitle,
               const std::function<void()>& oHelp) {
  const std::string sText = std::to_string(oError.ErrorCode) + " " + oError.ErrorText;
  if (oHelp) {
    oBox.ShowWithHelp(sText, sTitle, MessageBox::Icon::Exclamation, oHelp);
  } else {
    ShowText(oBox, sText, sTitle);
  }
}

void ShowError(MessageBox& oBox, const std::exception& oError, const std::string& sTitle) {
  ShowText(oBox, oError.what(), sTitle);
}

}  // namespace ZELWbr3::modZELError
