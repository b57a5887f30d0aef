#include "tests/desktop/TestWindow.h"
#include "zelwbr3/desktop/DesktopCommandlist.h"
#include "zelwbr3/dom/Style.h"
#include "zelwbr3/instances/common/analyzer/Process.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"
#include "zelwbr3/pages/analyzer/PageDBAnalyzer.h"

#include <fstream>

#include <signal.h>
#include <wx/button.h>
#include <wx/sizer.h>

namespace ZELWbr3::Desktop {
namespace {

/// A real analyzer, started and stopped on its page.
class AnalyzerTest : public TestPanel {
 protected:
  AnalyzerTest() : Commands(std::make_shared<DesktopCommandlist>(*Frame, Panel->Platform().Pump())) {
    setenv("XDG_STATE_HOME", (Folder / "state").c_str(), 1);
    setenv("ZELWBR3_ANALYZER", ZELANALYZER, 1);
    Frame->SetSizer(new wxBoxSizer(wxVERTICAL));
    Frame->GetSizer()->Add(Commands->Window(), wxSizerFlags().Expand());
    Frame->GetSizer()->Add(Panel, wxSizerFlags(1).Expand());
    std::ofstream(Folder / "a.db").close();  // an empty file is an empty database
    Database = SQLite::OpenDatabase((Folder / "a.db").string());
  }
  ~AnalyzerTest() override {
    Database->Analyzer()->Stop();
    Database.reset();
  }

  std::string Text(const std::string& sID) { return ByID(Front(), sID).innerText(); }
  bool IsShown(const std::string& sID) { return ByID(Front(), sID).style().display().empty(); }
  /// "started" or "stopped", and whether there is an error.
  std::string State() {
    return std::string(IsShown("rowStarted") ? "started" : "") + (IsShown("rowStopped") ? "stopped" : "") +
           (IsShown("rowError") ? " with an error" : "");
  }
  void WaitForState(const std::string& sState) {
    WaitFor(("the state " + sState).c_str(), [&] { return State() == sState; });
  }
  wxButton& Button(const std::string& sText) {
    for (wxWindow* oWindow : Commands->Window()->GetChildren()) {
      auto* oButton = dynamic_cast<wxButton*>(oWindow);
      if (oButton != nullptr && oButton->GetLabelText() == wxString(sText)) return *oButton;
    }
    throw std::runtime_error("No button " + sText);
  }
  /// The command's button, once it can be pressed.
  void Click(const std::string& sText) {
    WaitFor(("the command " + sText).c_str(), [&] { return Button(sText).IsEnabled(); });
    ClickOn(Button(sText));
  }
  /// Starts it, with the dialog's fields filled by keyboard.
  void Start() {
    Click("Start");
    Begin(InWindow("Start.Database.Analyzer", "key --window 0 --delay 20 alt+i 8 6 4 0 0 Return"));
    WaitForState("started");
  }

  std::shared_ptr<DesktopCommandlist> Commands;
  std::shared_ptr<ZELLib3::Database> Database;
};

TEST_F(AnalyzerTest, IsStartedKilledFoundDeadStartedAgainAndStopped) {
  Panel->Browser().PageDBAnalyzer()->Commandlist(Commands);
  Panel->Browser().PageDBAnalyzer()->Show(Database);
  WaitFor("the commands", [this] { return !Commands->Window()->GetChildren().empty(); });
  WaitForState("stopped");

  Start();
  EXPECT_EQ(Text("txtInterval"), "86400 sec.");
  const int iProcess = std::stoi(Text("txtProcessID"));
  const ZELWbr3::Instances::RunningProcess oProcess(iProcess);
  kill(iProcess, SIGKILL);
  ASSERT_TRUE(oProcess.WaitForEnd(std::chrono::seconds(20)));
  Front().Focus();
  // Not waited for: the page pumps messages while it fills, and would take the
  // end of that program from the one who waits.
  Begin("xdotool key F5");
  WaitForState("stopped with an error");
  EXPECT_NE(Text("txtError"), "");
  EXPECT_EQ(Text("txtProcessID"), "");

  Start();
  EXPECT_NE(Text("txtProcessID"), std::to_string(iProcess));
  Click("Stop");
  WaitForState("stopped");
}

}  // namespace
}  // namespace ZELWbr3::Desktop
