#include "host/ZelviewFrame.h"
#include "tests/desktop/TestWindow.h"
#include "tests/support/ChangedRecording.h"
#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/desktop/Accessible.h"
#include "zelwbr3/shell/Pages.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <sys/wait.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/filedlg.h>
#include <wx/image.h>
#include <wx/menu.h>
#include <wx/statusbr.h>

namespace ZELWbr3::Desktop {
namespace {

constexpr char Demo[] = "recorded:" ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json";

/// zelview's window, worked from its menus.
class ZelviewTest : public TestWindow {
 protected:
  ZelviewTest() {
    Frame->Destroy();
    Zelview = new Host::ZelviewFrame;
    Frame = Zelview;
    Zelview->Show();
    Zelview->Open(Demo);
    Zelview->ShowFirst("DataArea");
    ActivateFrame();
  }

  BrowserPanel& Panel() {
    const auto Find = [](const auto& oSelf, wxWindow* oWindow) -> BrowserPanel* {
      if (auto* oPanel = dynamic_cast<BrowserPanel*>(oWindow)) return oPanel;
      for (wxWindow* oChild : oWindow->GetChildren()) {
        if (BrowserPanel* oFound = oSelf(oSelf, oChild)) return oFound;
      }
      return nullptr;
    };
    BrowserPanel* oPanel = Find(Find, Zelview);
    if (oPanel == nullptr) throw std::runtime_error("zelview has no control");
    return *oPanel;
  }
  std::string Text(const std::string& sID) {
    const Element* oElement = Panel().Browser().VisibleDocument()->all().item(sID);
    return oElement == nullptr ? "" : oElement->innerText();
  }
  std::string Said() { return Zelview->GetStatusBar()->GetStatusText(0).utf8_string(); }
  void WaitForText(const std::string& sID, const std::string& sText) {
    WaitFor(sID + ": " + sText, [&] { return Text(sID).find(sText) != std::string::npos; });
  }
  /// Presses keys that open a file dialog, chooses a file there, and does
  /// something in the dialog that follows.
  void Choose(const std::string& sKeys, const std::filesystem::path& oFile,
              const std::function<void(wxDialog&)>& oNext = {}) {
    bool bChosen = false;
    const auto Chosen = [](wxDialog& o) -> wxFileDialog& { return dynamic_cast<wxFileDialog&>(o); };
    InDialog(
        [&](wxDialog& oDialog) {
          WaitFor("the file", [&] { return Chosen(oDialog).GetPath() == wxString(oFile.string()); });
          bChosen = true;
          InDialog(oNext);
          oDialog.EndModal(wxID_OK);
        },
        [&](wxDialog& oDialog) { Chosen(oDialog).SetPath(oFile.string()); });
    Press(sKeys);
    WaitFor("the choice", [&] { return bChosen; });
  }

  Host::ZelviewFrame* Zelview;
};

TEST_F(ZelviewTest, UnitsAndThemesChangeThePageShown) {
  for (const auto& [sKeys, sSize] : {std::pair("alt+v m", "1024.00 MB"),
                                     {"alt+v g", "1.00 GB"},
                                     {"alt+v p", "131072 Pages"},
                                     {"alt+v k", "1048576 KB"}}) {
    Press(sKeys);
    WaitForText("txtCurrentSize", sSize);
  }
  for (const auto& [sKeys, sTheme] : {std::pair("alt+v r", "dark"), {"alt+v l", "light"}}) {
    Press(sKeys);
    WaitFor(sTheme, [&] {
      return Panel().Browser().VisibleDocument()->documentElement()->getAttribute("data-theme") == sTheme;
    });
  }
}

TEST_F(ZelviewTest, TheKeyboardReachesListCommandsAndPage) {
  const auto WaitForFocus = [&](const std::string& sWanted) {
    std::string sFocus;
    WaitFor("the focus on " + sWanted, [&] {
      const wxWindow* oFocus = wxWindow::FindFocus();
      const bool bList = dynamic_cast<const wxDataViewCtrl*>(oFocus) != nullptr;
      const auto* oButton = dynamic_cast<const wxButton*>(oFocus);
      const auto oDocument = Panel().Browser().VisibleDocument();
      sFocus = Panel().PageHasFocus() ? "page " + (oDocument ? oDocument->activeElement()->id() : "")
               : bList                ? "list"
               : oButton != nullptr   ? "command " + oButton->GetLabelText().utf8_string()
                                      : "";
      return sFocus.starts_with(sWanted);
    });
  };
  const auto Go = [&](const std::string& sKey, const std::string& sWanted) {
    SCOPED_TRACE(sKey);
    Press(sKey);
    WaitForFocus(sWanted);
  };
  Zelview->ShowFirst("History");  // has commands
  WaitForFocus("page");
  for (const char* sStop : {"list", "command", "page"}) Go("F6", sStop);
  for (const char* sStop : {"command", "list", "page"}) Go("shift+F6", sStop);
  Go("F6", "list");
  Go("Tab", "page btnFormClose");
  Go("shift+Tab", "command");
  Go("Tab", "command Read All");
  Go("Tab", "page btnFormClose");
  Go("F6", "list");
  for (const auto& [sAround, sNext] : {std::pair("Tab", "list"), {"shift+Tab", "command"}}) {
    Go(sAround, "page");
    for (int i = 0; i < 30 && Panel().PageHasFocus(); ++i) Press(sAround);
    WaitForFocus(sNext);
  }
  // F5 and Escape are the page's, wherever they are pressed.
  int iActions = 0;
  const ScopedConnection oCount = Panel().Browser().ActionComplete.Connect([&](bool) { ++iActions; });
  Go("shift+F6", "list");
  Press("F5");
  WaitFor("the refresh", [&] { return iActions == 1; });
  Press("Escape");
  WaitForText("txtFormTitle", "Instance Overview");
  // The arrow keys look at pages; a click goes there.
  Go("Down", "list");
  WaitForText("txtFormTitle", "Data Area");
  Go("Return", "page");
  Go("shift+F6", "list");
  Do(ClickAt(wxWindow::FindFocus()->ClientToScreen(wxPoint(40, 80))) + " 1");
  WaitForFocus("page");
}

TEST_F(ZelviewTest, ThePageRefreshesByItselfButNotUnderADialogOrASelection) {
  Zelview->ShowFirst("Main");
  Host::RefreshBar& oBar = Zelview->Refreshing();
  int iDone = 0;
  int iLeftOut = 0;
  const ScopedConnection oTicks = oBar.Ticked.Connect([&](bool bDone) { ++(bDone ? iDone : iLeftOut); });
  oBar.Interval(2);
  WaitFor("a refresh", [&] { return iDone == 1; });
  WaitFor("when it was", [&] { return Zelview->GetStatusBar()->GetStatusText(1).StartsWith("Read "); });

  bool bOpened = false;
  InDialog([&](wxDialog&) {
    bOpened = true;
    iDone = iLeftOut = 0;
    WaitFor("a refresh left out", [&] { return iLeftOut == 1; });
    EXPECT_EQ(iDone, 0);
    Begin("xdotool key Escape");
  });
  Press("alt+h m");
  WaitFor("the dialog's end", [&] { return bOpened && OpenDialog() == nullptr; });

  Panel().SetFocus();
  Press("ctrl+a");
  iDone = iLeftOut = 0;
  WaitFor("a refresh left out", [&] { return iLeftOut == 1; });
  EXPECT_EQ(iDone, 0);
  oBar.Interval(0);
}

TEST_F(ZelviewTest, BackLeadsToTheListAsItWas) {
  // Main has counted what needs attention.
  EXPECT_NE(AccessibleTree(*Zelview).find("table cell: 1\n"), std::string::npos) << AccessibleTree(*Zelview);
  Zelview->ShowFirst("Parameters");
  DesktopWebBrowser& oList = *Panel().Platform().Front();
  const auto Filter = [&] { return Ask(oList, "document.querySelector('.zelListFilter').value"); };
  Press("ctrl+f");
  Press("s");
  WaitFor("the filter", [&] { return Filter() == "s"; });
  Ask(oList, "document.getElementById('PARAMCACHE_SIZE').focus()");
  Press("Return");
  WaitForText("txtName", "CACHE_SIZE");
  Press("alt+Left");
  WaitForText("txtFormTitle", "Parameters");
  EXPECT_EQ(Panel().Platform().Front(), &oList);
  EXPECT_EQ(Filter(), "s");
  Press("alt+Right");
  WaitForText("txtName", "CACHE_SIZE");
}

TEST_F(ZelviewTest, ACurveOpensAChartThatEndsWithTheFigureOfTheCell) {
  const auto oDatabase = std::make_shared<Testing::ChangedRecording>("demo");
  const auto oPage = Panel().Browser().PageInfoActivity();
  oPage->Show(oDatabase);
  const auto Front = [&]() -> DesktopWebBrowser& {
    const auto& oBrowsers = Panel().Platform().Browsers();
    return **std::ranges::find_if(oBrowsers, &DesktopWebBrowser::IsVisible);
  };
  const std::string sRate = "document.querySelector('#tabCommands td.zelRate > span')?.textContent ?? ''";
  oDatabase->Change({"Activity.SQLCounter.0 = 51000"});
  Zelview->Refreshing().Interval(2);
  std::string sCell;
  WaitFor("the rate", [&] { return (sCell = Ask(Front(), sRate)).ends_with("/s"); });
  Zelview->Refreshing().Interval(0);
  ExpectLiveEqualsReplica(Front());
  Panel().SetFocus();
  Ask(Front(), "document.querySelector('#tabCommands .zelCurveLink').focus(); ''");
  WaitFor("the focus", [&] { return Front().Document()->activeElement()->id() == "SERIEStabCommands.0"; });
  Press("Return");
  WaitFor("the chart", [&] {
    return Panel().Browser().ActPageObj() != oPage && Front().Settled() &&
           Ask(Front(), "document.querySelectorAll('.zelChartPlot canvas, .zelChartTable tbody').length") == "2";
  });
  const std::string sFigure = sCell.substr(0, sCell.size() - 2);
  EXPECT_EQ(Ask(Front(), "[...document.querySelectorAll('.u-legend .u-value')].at(-1).textContent"), sFigure);
  EXPECT_EQ(Ask(Front(), "document.querySelector('.zelChartTable tbody tr').cells[1].textContent"), sFigure);
  EXPECT_EQ(Ask(Front(), "document.querySelector('.zelChartTable thead th:nth-child(2)').textContent"),
            "SQL Commands per second");

  // What is seen is saved.
  const auto Save = [&](const std::string& sButton, const std::string& sFile) {
    Ask(Front(), "[...document.querySelectorAll('.zelChartBar button')].find(o => o.textContent.startsWith('" +
                     sButton + "')).focus(); ''");
    Choose("Return", Folder / sFile);
    std::string sText;
    WaitFor(sFile,
            [&] { return std::filesystem::exists(Folder / sFile) && !(sText = ReadFile(Folder / sFile)).empty(); });
    return sText;
  };
  const std::string sPicture = Save("Picture", "chart.png");
  EXPECT_TRUE(sPicture.starts_with("\x89PNG\r\n") && sPicture.size() > 3000) << sPicture.size();
  const std::string sCSV = Save("CSV", "chart.csv");
  EXPECT_TRUE(sCSV.starts_with("Time,SQL Commands per second\r\n")) << sCSV;
  const double dLast = std::stod(sCSV.substr(sCSV.rfind(',') + 1));
  EXPECT_NEAR(dLast, std::stod(sFigure), dLast / 100) << sCSV;
}

TEST_F(ZelviewTest, AFigureIsExplainedByKeyAndByPointer) {
  Zelview->ShowFirst("Main");
  DesktopWebBrowser& oMain = *Panel().Platform().Front();
  const auto Explained = [&] { return Ask(oMain, "document.querySelector('.zelHint > strong')?.textContent ?? ''"); };
  const auto Expect = [&](const std::string& sFigure) {
    WaitFor("\"" + sFigure + "\"", [&] { return Explained() == sFigure; });
  };
  Press("F1");
  Expect("Data Area");
  EXPECT_EQ(Ask(oMain, "document.querySelector('.zelHint').innerText.includes('What to do: ')"), "true");
  EXPECT_EQ(Ask(oMain, "document.activeElement.getAttribute('aria-describedby')"), "zelHint");
  Press("Down");
  Expect("Log Area");
  ExpectLiveEqualsReplica(oMain);
  Press("Escape");
  Expect("");
  EXPECT_EQ(Panel().Browser().ActPageObj()->Name(), "Main");
  // The page's own place on the screen: the pointer rests on a label.
  wxPoint oPlace;
  std::istringstream(Ask(oMain,
                         "(r => Math.round(r.x + 9) + ' ' + Math.round(r.y + 9))(document.getElementById("
                         "'General.Version.Val').previousElementSibling.getBoundingClientRect())")) >>
      oPlace.x >> oPlace.y;
  oPlace = Panel().ClientToScreen(oPlace);
  Do("xdotool mousemove " + std::to_string(oPlace.x) + " " + std::to_string(oPlace.y));
  Expect("Version");
}

TEST_F(ZelviewTest, ScreenReadersAreToldWhatIsWhat) {
  std::string sTree;
  const auto Has = [&](const std::string& sLine) {
    return (sTree = AccessibleTree(*Zelview)).find(sLine) != sTree.npos;
  };
  Zelview->ShowFirst("History");
  const ScopedConnection oBegin =
      Panel().Browser().ActionBegin.Connect([&] { EXPECT_TRUE(Has("statusbar: Working…\n")) << sTree; });
  int iDone = 0;
  const ScopedConnection oEnd = Panel().Browser().ActionComplete.Connect([&](bool) { ++iDone; });
  Press("F5");
  WaitFor("the refresh", [&] { return iDone == 1; });  // until then, keys are not the menu's
  for (const char* sLine : {"frame: DEMO - zelview\n", "menu bar: Menu\n", ": Pages\n", ": Commands\n",
                            "button: Read All\n", "statusbar: \n"}) {
    WaitFor(sLine, [&] { return Has(sLine); });
  }
  bool bNamed = false;
  InDialog([&](wxDialog& oDialog) {
    bNamed = AccessibleTree(oDialog).find(": Question\n") != std::string::npos;
    Begin("xdotool key Escape");
  });
  const int iMessage = Zelview->GetMenuBar()->FindMenuItem("Help", wxString::FromUTF8("Look Up a Message…"));
  Zelview->GetEventHandler()->AddPendingEvent(wxCommandEvent(wxEVT_MENU, iMessage));
  WaitFor("the dialog's end", [&] { return bNamed && OpenDialog() == nullptr; });
}

TEST_F(ZelviewTest, ARecordingIsSavedAndOpenedAndADatabaseFileIsOpened) {
  Choose("ctrl+s", Folder / "saved.json");
  WaitFor("the recording", [&] { return Said() == "The recording is written."; });
  std::ofstream(Folder / "empty.db").close();  // an empty file is an empty database
  Choose("ctrl+o", Folder / "empty.db");
  WaitFor("the database", [&] { return Zelview->GetTitle() == "empty.db - zelview"; });
  WaitForText("txtFormTitle", "Instance Overview");
  Choose("alt+f r", Folder / "saved.json");
  WaitFor("the recording", [&] { return Zelview->GetTitle() == "DEMO - zelview"; });

  // What cannot be opened is named, and what was shown stays.
  std::ofstream(Folder / "broken.json") << "{";
  std::string sError;
  Choose("alt+f r", Folder / "broken.json", [&](wxDialog& oError) {
    for (const wxWindow* o : oError.GetChildren()) sError += o->GetLabel().utf8_string();
    Begin("xdotool key Return");
  });
  WaitFor("the error", [&] { return sError.find("broken.json") != std::string::npos && OpenDialog() == nullptr; });
  EXPECT_EQ(Zelview->GetTitle(), "DEMO - zelview");
}

TEST_F(ZelviewTest, TheStartPageShowsLightsAndAHangingInstanceHoldsNothing) {
  const std::string sCheck = (Folder / "check").string();
  std::ofstream(sCheck) << "#!/bin/sh\ncase $4 in *hang*) exec sleep 60;; esac\n"
                           R"(echo '{"level":"CRITICAL","instance":"NEW","findings":[{"text":"It burns"}]}')"
                        << "\n";
  std::filesystem::permissions(sCheck, std::filesystem::perms::owner_all);
  setenv("ZELWBR3_REPORT", sCheck.c_str(), 1);
  Frame->Destroy();
  Frame = Zelview = new Host::ZelviewFrame;
  unsetenv("ZELWBR3_REPORT");
  const std::string sNew = "recorded:" ZELWBR3_SOURCE_DIR "/tests/recordings/new-7.6.json";
  Host::Settings oSettings;
  oSettings.Recent = {sNew, "postgresql://hang"};
  Zelview->Remember(oSettings, false);
  Zelview->Show();
  Zelview->ShowStart();
  Host::StartPage& oStart = Zelview->Start();
  WaitFor("the light", [&] { return oStart.Row(0)[0] == "Critical"; });
  EXPECT_EQ(oStart.Row(0), (std::vector<std::string>{"Critical", "NEW", "It burns", sNew}));
  EXPECT_EQ(oStart.Row(1)[0], "Checking\u2026");
  ActivateFrame();
  Press("Return");
  WaitFor("the instance", [&] { return Zelview->GetTitle() == "NEW - zelview" && !oStart.IsShown(); });
  WaitForText("txtFormTitle", "Instance Overview");
}

TEST_F(ZelviewTest, AMessageIsLookedUp) {
  bool bShown = false;
  InDialog([&](wxDialog&) {
    InDialog([&](wxDialog& oMessage) {
      bShown = oMessage.GetTitle() == "Message";
      Begin("xdotool key Escape");
    });
    Begin("xdotool key 5 Return");
  });
  Press("alt+h m");
  WaitFor("the message's end", [&] { return bShown && OpenDialog() == nullptr; });
}

TEST_F(ZelviewTest, ClosingItAnswersADialogAndEndsAWaitWithoutAMessage) {
  int iClosed = 0;
  Zelview->Bind(wxEVT_CLOSE_WINDOW, [&](wxCloseEvent&) { ++iClosed; });
  Press("ctrl+q");
  WaitFor("the end", [&] { return iClosed == 1; });
  InDialog([](wxDialog&) { Begin("xdotool key ctrl+q"); });
  Press("alt+h m");
  WaitFor("the end of the dialog and of the window", [&] { return iClosed == 2; });
  EXPECT_EQ(OpenDialog(), nullptr);
  wxTheApp->CallAfter([this] { Zelview->Close(); });
  EXPECT_THROW(Zelview->ShowFirst("DataArea"), ClosingError);
  WaitFor("the end of the window", [&] { return iClosed == 3; });
}

/// The program as a user starts it.
class ZelviewProgramTest : public testing::Test {
 protected:
  /// Runs it to its end and keeps its exit code and what it says.
  void Run(const std::string& sArguments, const std::string& sEnvironment = "") {
    const std::string sCommand = sEnvironment + " XDG_DATA_HOME='" + Folder.Path() + "' XDG_CONFIG_HOME='" +
                                 Folder.Path() + "' timeout 60 '" ZELVIEW "' " + sArguments + " 2>'" +
                                 Folder.Path("errors") + "'";
    const int iStatus = std::system(sCommand.c_str());
    Code = WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -1;
    Errors = Folder.Read("errors");
  }

  /// The colours of a picture: a blank window has a handful.
  static std::size_t Colours(const std::string& sFile) {
    if (wxImage::FindHandler(wxBITMAP_TYPE_PNG) == nullptr) wxImage::AddHandler(new wxPNGHandler);
    wxImage oImage;
    return oImage.LoadFile(sFile, wxBITMAP_TYPE_PNG) ? oImage.CountColours(1000) : 0;
  }

  Testing::TempFolder Folder;
  int Code = 0;
  std::string Errors;
};

TEST_F(ZelviewProgramTest, TakesAPictureOfTheSampleAndOfARecordingsPage) {
  const std::string sSample = Folder.Path("sample picture.png");
  Run("--screenshot '" + sSample + "'");
  EXPECT_EQ(Code, 0) << Errors;
  EXPECT_GT(Colours(sSample), 50u);

  const std::string sPage = Folder.Path("page.png");
  Run("recorded:" ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json --page Parameters --unit 1 --screenshot '" + sPage +
      "'");
  EXPECT_EQ(Code, 0) << Errors;
  EXPECT_GT(Colours(sPage), 50u);
}

TEST_F(ZelviewProgramTest, SaysInOneLineWhatIsWrong) {
  struct Case {
    std::string Arguments;
    std::string Names;
    std::string Environment = "";
  };
  for (const Case& oCase : std::initializer_list<Case>{
           {"nonsense", "\"nonsense\""},
           {"recorded:/no/such.json", "/no/such.json"},
           {"sqlite:/no/such.db", "/no/such.db"},
           {"--page Nowhere", "\"Nowhere\""},
           {"--page SQLTable", "\"SQLTable\""},
           {"--unit 9", "--unit"},
           {"--screenshot /no/such/picture.png", "/no/such/picture.png"},
           {"--record /no/such/recording.json", "/no/such/recording.json"},
           {"--bogus", "--bogus"},
           {"", "\":987\"", "DISPLAY=:987"},
           {"", "/no/such/html", "ZELWBR3_HTML=/no/such/html"},
       }) {
    SCOPED_TRACE(oCase.Environment + " zelview " + oCase.Arguments);
    Run(oCase.Arguments, oCase.Environment);
    EXPECT_EQ(Code, 1);
    EXPECT_NE(Errors.find(oCase.Names), std::string::npos) << Errors;
    EXPECT_EQ(std::count(Errors.begin(), Errors.end(), '\n'), 1) << Errors;
  }
}

}  // namespace
}  // namespace ZELWbr3::Desktop
