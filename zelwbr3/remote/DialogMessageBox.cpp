#include "zelwbr3/remote/DialogMessageBox.h"

namespace ZELWbr3::Remote {

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

Dialog BoxOf(const std::string& sText, const std::string& sTitle, MessageBox::Buttons eButtons,
             MessageBox::Icon eIcon) {
  return {.Name = "",
          .Caption = sTitle,
          .Picture = eIcon,
          .Text = sText,
          .Buttons = ButtonsOf(eButtons),
          // What is asked with Yes stops something.
          .DefaultButton = eButtons == MessageBox::Buttons::YesNo ? 1U : 0U};
}

}  // namespace

MessageBox::Answer DialogMessageBox::Show(const std::string& sText, const std::string& sTitle, Buttons eButtons,
                                          Icon eIcon) {
  Dialog oDialog = BoxOf(sText, sTitle, eButtons, eIcon);
  const bool bConfirmed = Ask(oDialog, {}) == Dialog::Answer::OK;
  if (eButtons == Buttons::YesNo) return bConfirmed ? Answer::Yes : Answer::No;
  return bConfirmed || eButtons == Buttons::OK ? Answer::OK : Answer::Cancel;
}

void DialogMessageBox::ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                                    const std::function<void()>& oHelp) {
  Dialog oDialog = BoxOf(sText, sTitle, Buttons::OK, eIcon);
  Ask(oDialog, oHelp);
}

}  // namespace ZELWbr3::Remote
