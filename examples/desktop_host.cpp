// The smallest host with a window: a frame with the control and, above it, the
// commands of its pages. Shows the database file named on the command line.

#include "zelwbr3/desktop/BrowserPanel.h"
#include "zelwbr3/desktop/DesktopCommandlist.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"
#include "zelwbr3/shell/Pages.h"

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>

class DesktopHost : public wxApp {
  bool OnInit() override {
    auto* oFrame = new wxFrame(nullptr, wxID_ANY, "A Host", wxDefaultPosition, wxSize(1000, 800));
    auto* oPanel = new ZELWbr3::Desktop::BrowserPanel(oFrame);
    m_oCommandlist = std::make_shared<ZELWbr3::Desktop::DesktopCommandlist>(*oFrame, oPanel->Platform().Pump());
    oPanel->MoveAfterInTabOrder(m_oCommandlist->Window());
    auto* oSizer = new wxBoxSizer(wxVERTICAL);
    oSizer->Add(m_oCommandlist->Window(), wxSizerFlags().Expand());
    oSizer->Add(oPanel, wxSizerFlags(1).Expand());
    oFrame->SetSizer(oSizer);
    oFrame->Show();
    // Showing a page waits in the toolkit's loop, so that loop must be running.
    oFrame->CallAfter([this, oFrame, oPanel] { ShowPage(*oFrame, oPanel->Browser()); });
    return true;
  }

  void ShowPage(wxFrame& oFrame, ZELWbr3::Browser& oBrowser) {
    try {
      oBrowser.HTMLPath(ZELWBR3_HTML);
      oBrowser.PageMain()->Commandlist(m_oCommandlist);
      oBrowser.PageMain()->Show(ZELWbr3::SQLite::OpenDatabase(argc > 1 ? argv[1].utf8_string() : ""));
    } catch (const ZELWbr3::WaitError&) {
      // The window was closed before the page was complete.
    } catch (const std::exception& oError) {
      wxMessageBox(wxString::FromUTF8(oError.what()), "A Host", wxOK | wxICON_ERROR, &oFrame);
      oFrame.Close();
    }
  }

  std::shared_ptr<ZELWbr3::Desktop::DesktopCommandlist> m_oCommandlist;
};

wxIMPLEMENT_APP(DesktopHost);
