// Two controls side by side: the overview at the left, the parameters at the right,
// of one instance or of two. Each control has frames, pages and events of its own.

#include "zelwbr3/desktop/BrowserPanel.h"
#include "zelwbr3/instances/sqlite/OpenDatabase.h"
#include "zelwbr3/pages/config/PageParameters.h"
#include "zelwbr3/pages/main/PageMain.h"

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/msgdlg.h>
#include <wx/splitter.h>

class TwoPanels : public wxApp {
  bool OnInit() override {
    auto* oFrame = new wxFrame(nullptr, wxID_ANY, "Two Panels", wxDefaultPosition, wxSize(1400, 800));
    auto* oSplitter = new wxSplitterWindow(oFrame, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSP_LIVE_UPDATE);
    auto* oLeft = new ZELWbr3::Desktop::BrowserPanel(oSplitter);
    auto* oRight = new ZELWbr3::Desktop::BrowserPanel(oSplitter);
    oSplitter->SplitVertically(oLeft, oRight, 700);
    oFrame->Show();
    oLeft->Browser().HTMLPath(ZELWBR3_HTML);
    oRight->Browser().HTMLPath(ZELWBR3_HTML);
    // An instance answers one call at a time: one object for each control.
    const std::string sLeft = argc > 1 ? argv[1].utf8_string() : "";
    const std::string sRight = argc > 2 ? argv[2].utf8_string() : sLeft;
    oFrame->CallAfter([=] {
      try {
        oLeft->Browser().PageMain()->Show(ZELWbr3::SQLite::OpenDatabase(sLeft));
        oRight->Browser().PageParameters()->Show(ZELWbr3::SQLite::OpenDatabase(sRight));
      } catch (const ZELWbr3::WaitError&) {
      } catch (const std::exception& oError) {
        wxMessageBox(wxString::FromUTF8(oError.what()), "Two Panels", wxOK | wxICON_ERROR, oFrame);
        oFrame->Close();
      }
    });
    return true;
  }
};

wxIMPLEMENT_APP(TwoPanels);
