#include "desktop/DesktopMessageBox.h"

#include "dom/Text.h"

#include <wx/msgdlg.h>

namespace ZELWbr3::Desktop {

MessageBox::Answer DesktopMessageBox::Show(const std::string& sText, const std::string& sTitle, Buttons eButtons,
                                           Icon eIcon) {
  long lStyle = eIcon == Icon::Question ? wxICON_QUESTION : wxICON_EXCLAMATION;
  switch (eButtons) {
    case Buttons::OK:
      lStyle |= wxOK;
      break;
    case Buttons::OKCancel:
      lStyle |= wxOK | wxCANCEL;
      break;
    case Buttons::YesNo:
      lStyle |= wxYES_NO;
      break;
  }
  const auto Shown = [](const std::string& s) { return wxString::FromUTF8(Text::Clean(s)); };
  wxMessageDialog oDialog(wxGetTopLevelParent(m_oParent), Shown(sText), Shown(sTitle), lStyle);
  const int iAnswer = oDialog.ShowModal();

  // Whatever is not a choice, such as Escape, is the cancelling one.
  switch (eButtons) {
    case Buttons::OK:
      return Answer::OK;
    case Buttons::OKCancel:
      return iAnswer == wxID_OK ? Answer::OK : Answer::Cancel;
    case Buttons::YesNo:
      return iAnswer == wxID_YES ? Answer::Yes : Answer::No;
  }
  return Answer::Cancel;
}

}  // namespace ZELWbr3::Desktop
