// The smallest host with a window: one frame with the control, which shows the
// database file named on the command line.

#include "zelwbr3/desktop/BrowserPanel.h"
#include "zelwbr3/instances/sqlite/OpenDatabase.h"
#include "zelwbr3/pages/main/PageMain.h"

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/msgdlg.h>

class Smallest : public wxApp {
  bool OnInit() override {
    auto* oFrame = new wxFrame(nullptr, wxID_ANY, "Smallest", wxDefaultPosition, wxSize(1000, 800));
    auto* oPanel = new ZELWbr3::Desktop::BrowserPanel(oFrame);
    oPanel->Browser().HTMLPath(ZELWBR3_HTML);
    oFrame->Show();
    // Showing a page waits in the toolkit's loop, so that loop must be running.
    oFrame->CallAfter([this, oFrame, oPanel] {
      try {
        oPanel->Browser().PageMain()->Show(ZELWbr3::SQLite::OpenDatabase(argc > 1 ? argv[1].utf8_string() : ""));
      } catch (const ZELWbr3::WaitError&) {
        // The window was closed before the page was complete.
      } catch (const std::exception& oError) {
        wxMessageBox(wxString::FromUTF8(oError.what()), "Smallest", wxOK | wxICON_ERROR, oFrame);
        oFrame->Close();
      }
    });
    return true;
  }
};

wxIMPLEMENT_APP(Smallest);
