#include "zelwbr3/desktop/DesktopMessageBox.h"

#include "zelwbr3/desktop/DialogWindow.h"

namespace ZELWbr3::Desktop {

namespace {

/// The buttons as those of a dialog: the cancelling one gives Cancel.
std::vector<Dialog::Button> ButtonsOf(MessageBox::Buttons eButtons) {
  using Answer = Dialog::Answer;
  switch (eButtons) {
    case MessageBox::Buttons::OKCancel:
      return {{Answer::OK, "cmdOK", "&OK"}, {Answer::Cancel, "cmdCancel", "&Cancel"}};
    case MessageBox::Buttons::YesNo:
      return {{Answer::OK, "cmdYes", "&Yes"}, {Answer::Cancel, "cmdNo", "&No"}};
    default:
      return {{Answer::OK, "cmdOK", "&OK"}};
  }
}

}  // namespace

MessageBox::Answer DesktopMessageBox::Show(const std::string& sText, const std::string& sTitle, Buttons eButtons,
                                           Icon eIcon) {
  const bool bConfirmed = Confirmed(sText, sTitle, eButtons, eIcon, {});
  if (eButtons == Buttons::YesNo) return bConfirmed ? Answer::Yes : Answer::No;
  return bConfirmed || eButtons == Buttons::OK ? Answer::OK : Answer::Cancel;
}

void DesktopMessageBox::ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                                     const std::function<void()>& oHelp) {
  Confirmed(sText, sTitle, Buttons::OK, eIcon, oHelp);
}

bool DesktopMessageBox::Confirmed(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon,
                                  const std::function<void()>& oHelp) {
  Dialog oDialog{.Name = "",
                 .Caption = sTitle,
                 .Picture = eIcon,
                 .Text = sText,
                 .TextIsHTML = false,
                 .Buttons = ButtonsOf(eButtons),
                 .DefaultButton = eButtons == Buttons::YesNo ? 1U : 0U};  // what is asked with Yes stops something
  return DialogWindow(wxGetTopLevelParent(m_oParent), oDialog, oHelp).Ask() == Dialog::Answer::OK;
}

}  // namespace ZELWbr3::Desktop
