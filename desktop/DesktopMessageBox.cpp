#include "desktop/DesktopMessageBox.h"

#include "dom/Text.h"

#include <exception>

#include <wx/msgdlg.h>

#include <wx/generic/msgdlgg.h>  // needs the one before

namespace ZELWbr3::Desktop {

namespace {

wxString Shown(const std::string& sText) { return wxString::FromUTF8(Text::Clean(sText)); }

}  // namespace

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

void DesktopMessageBox::ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                                     const std::function<void()>& oHelp) {
  // Not the native dialog, which any of its buttons closes.
  wxGenericMessageDialog oDialog(wxGetTopLevelParent(m_oParent), Shown(sText), Shown(sTitle),
                                 wxOK | wxHELP | (eIcon == Icon::Question ? wxICON_QUESTION : wxICON_EXCLAMATION));
  std::exception_ptr oError;  // none may leave a handler of the toolkit
  oDialog.Bind(
      wxEVT_BUTTON,
      [&](wxCommandEvent&) {
        try {
          oHelp();
        } catch (...) {
          oError = std::current_exception();
          oDialog.EndModal(wxID_OK);
        }
      },
      wxID_HELP);
  oDialog.ShowModal();
  if (oError != nullptr) std::rethrow_exception(oError);
}

}  // namespace ZELWbr3::Desktop
