// Events and the command list: a toolbar with the commands of the page in front
// above the control, and a status bar that says what the control reports.

#include "zelwbr3/desktop/BrowserPanel.h"
#include "zelwbr3/desktop/DesktopCommandlist.h"
#include "zelwbr3/framework/modCmdEnum.h"
#include "zelwbr3/framework/modPicture.h"
#include "zelwbr3/instances/sqlite/OpenDatabase.h"
#include "zelwbr3/pages/main/PageMain.h"

#include <wx/app.h>
#include <wx/artprov.h>
#include <wx/frame.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>

/// The host's picture with a number that a page asks for.
static wxBitmapBundle PictureOf(ZELWbr3::Long lPicture) {
  if (lPicture == ZELWbr3::modPicture::Close) return wxArtProvider::GetBitmapBundle(wxART_CLOSE, wxART_TOOLBAR);
  return {};  // the item only shows its text
}

class Toolbar : public wxApp {
  bool OnInit() override {
    auto* oFrame = new wxFrame(nullptr, wxID_ANY, "Toolbar", wxDefaultPosition, wxSize(1000, 800));
    oFrame->CreateStatusBar();
    auto* oPanel = new ZELWbr3::Desktop::BrowserPanel(oFrame);
    m_oCommands = std::make_shared<ZELWbr3::Desktop::DesktopCommandlist>(*oFrame, *oPanel, PictureOf);
    oPanel->MoveAfterInTabOrder(m_oCommands->Window());
    auto* oSizer = new wxBoxSizer(wxVERTICAL);
    oSizer->Add(m_oCommands->Window(), wxSizerFlags().Expand());
    oSizer->Add(oPanel, wxSizerFlags(1).Expand());
    oFrame->SetSizer(oSizer);
    oFrame->Show();

    ZELWbr3::Browser& oBrowser = oPanel->Browser();
    oBrowser.HTMLPath(ZELWBR3_HTML);
    oBrowser.Commandlist(m_oCommands);
    // The handlers live as long as the control, and so does the frame that they use.
    oBrowser.PageComplete.Connect([oFrame](const std::shared_ptr<ZELWbr3::Page>& oPage) {
      oFrame->SetStatusText(wxString::FromUTF8(oPage->Name()));
    });
    oBrowser.ActionBegin.Connect([oFrame] { oFrame->SetStatusText("Working…"); });
    oBrowser.ActionComplete.Connect([oFrame](bool) { oFrame->SetStatusText("Done"); });
    oBrowser.Command.Connect([oFrame](ZELWbr3::Long lCommand) {
      if (lCommand == ZELWbr3::modCmdEnum::cmdBackupWizard) {
        wxMessageBox("Here the host's backup wizard would open.", "Toolbar", wxOK, oFrame);
      }
    });
    oFrame->CallAfter([this, oFrame, &oBrowser] {
      try {
        oBrowser.PageMain()->Show(ZELWbr3::SQLite::OpenDatabase(argc > 1 ? argv[1].utf8_string() : ""));
      } catch (const ZELWbr3::WaitError&) {
      } catch (const std::exception& oError) {
        wxMessageBox(wxString::FromUTF8(oError.what()), "Toolbar", wxOK | wxICON_ERROR, oFrame);
        oFrame->Close();
      }
    });
    return true;
  }

  std::shared_ptr<ZELWbr3::Desktop::DesktopCommandlist> m_oCommands;
};

wxIMPLEMENT_APP(Toolbar);
