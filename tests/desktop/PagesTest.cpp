#include "tests/desktop/TestWindow.h"
#include "zelwbr3/shell/Pages.h"

#include <wx/app.h>

namespace ZELWbr3::Desktop {
namespace {

/// The control's own pages on the real browser, by mouse and by keyboard.
class PagesTest : public TestPanel {
 protected:
  PagesTest() {
    Panel->Platform().Theme(Theme::Light);
    Control().PageMain()->Show(Instance);
  }

  std::string Selected() { return ByID(Front(), "tbsTabStripParameters").getAttribute("selectedtab"); }
  std::string HistoryClass() { return ByID(Front(), "PHISTCACHE_SIZE").className(); }
  void WaitForTitle(const std::string& sTitle) {
    WaitFor(sTitle, [&] { return Text("txtFormTitle") == sTitle && Front().Settled(); });
  }
  /// Waits until an element has the focus, for the browser and for the program.
  void WaitForFocus(const std::string& sID) {
    WaitFor("the focus of " + sID, [&] { return Front().Document()->activeElement()->id() == sID; });
    EXPECT_EQ(Ask(Front(), "document.activeElement.id"), sID);
  }

  std::shared_ptr<ZELLib3::Database> Instance = Recording("demo");
};

TEST_F(PagesTest, TheBrowserShowsWhatThePagesHaveWritten) {
  // Shown again, a page is the same in the document that was loaded.
  const std::string Seen = "performance.timeOrigin + zelwbr3.Live()";
  for (const char* sRecording : {"demo", "hostile", "full-data", "hot-standby"}) {
    SCOPED_TRACE(sRecording);
    Instance = Recording(sRecording);
    const auto Check = [&](const auto&... oPages) {
      const auto CheckOne = [&](const auto& oPage) {
        SCOPED_TRACE(oPage->Name());
        oPage->Show(Instance);
        EXPECT_EQ(Ask(Front(), "document.getElementById('txtFormTitle').textContent"), Text("txtFormTitle"));
        ExpectLiveEqualsReplica(Front());
        const std::string sSeen = Ask(Front(), Seen);
        oPage->Show(Instance);
        EXPECT_EQ(Ask(Front(), Seen), sSeen);
        ExpectLiveEqualsReplica(Front());
      };
      (CheckOne(oPages), ...);
    };
    Check(Control().PageMain(), Control().PageDataArea(), Control().PageLogArea(), Control().PageParameters(),
          Control().PageInfoCaches(), Control().PageInfoActivity(), Control().PageSessions(), Control().PageSysInfos(),
          Control().PageHistory(), Control().PageDBAnalyzer());
  }
  Control().PageDefault()->Show();
  ExpectLiveEqualsReplica(Front());
  const wxSize oSize = Panel->GetClientSize();
  EXPECT_EQ(Ask(Front(), "innerWidth + ' ' + innerHeight"), std::to_string(oSize.x) + " " + std::to_string(oSize.y));
}

TEST_F(PagesTest, TheKeyboardFollowsTheFrameInFront) {
  Panel->SetFocus();
  Control().PageParameters()->Show(Instance);
  WaitFor("the focus", [&] { return Front().View()->HasFocus(); });
  Press("Escape");
  WaitForTitle("Instance Overview");
}

TEST_F(PagesTest, ATabStripIsOneStopOfTheTabKeyAndArrowsMoveInIt) {
  Control().PageParameters()->Show(Instance);
  ClickOn(Front(), "tbsTab1Parameters");
  WaitFor("the tab", [&] { return Selected() == "1"; });
  const auto GoTo = [this](const std::string& sKey, const std::string& sID) {
    Press(sKey);
    WaitForFocus(sID);
  };
  GoTo("Right", "tbsTab2Parameters");
  EXPECT_EQ(Ask(Front(), "document.activeElement.matches(':focus-visible')"), "true");
  GoTo("End", "tbsTab3Parameters");
  GoTo("Right", "tbsTab0Parameters");
  GoTo("Left", "tbsTab3Parameters");
  EXPECT_EQ(Selected(), "1");
  Press("space");
  WaitFor("the tab", [&] { return Selected() == "3"; });
  GoTo("Home", "tbsTab0Parameters");
  Press("Return");
  WaitFor("the tab", [&] { return Selected() == "0"; });
  // Out of the strip from a tab in its middle, and back to the selected one.
  GoTo("Right", "tbsTab1Parameters");
  Press("Tab");
  WaitFor("the list's filter", [&] { return Ask(Front(), "document.activeElement.className") == "zelListFilter"; });
  GoTo("shift+Tab", "tbsTab0Parameters");
  ExpectLiveEqualsReplica(Front());
}

TEST_F(PagesTest, AHistoryUnfoldsAndAParameterOpensByKeyboard) {
  Control().PageParameters()->Show(Instance);
  const auto WaitForHistory = [this](const std::string& sClass) {
    WaitFor(sClass, [&] { return HistoryClass() == sClass; });
    ExpectLiveEqualsReplica(Front());
  };
  ClickOn(Front(), "PHISTCACHE_SIZE");
  WaitForHistory("zelTblCellExpOpen");
  EXPECT_EQ(Ask(Front(), "document.querySelectorAll('#rowItem').length"), "2");
  WaitForFocus("PHISTCACHE_SIZE");
  Press("space");
  WaitForHistory("zelTblCellExpClosed");
  Press("Return");
  WaitForHistory("zelTblCellExpOpen");

  Press("Tab");
  WaitForFocus("PARAMCACHE_SIZE");
  Press("Return");
  WaitForTitle("Parameter");
  ExpectLiveEqualsReplica(Front());
  EXPECT_EQ(Ask(Front(), "document.getElementById('txtActVal').innerText"), "10000");
  Press("Escape");
  WaitForTitle("Instance Overview");
}

class BrowserPanelTest : public TestPanel {};

TEST_F(BrowserPanelTest, WithoutAPageTheKeysAreTheControlsOwn) {
  std::string sKeys;
  const auto Write = [&](const char* sWhat) {
    return [&sKeys, sWhat](Integer& iKey, auto&...) { sKeys += sWhat + std::to_string(iKey) + " "; };
  };
  const ScopedConnection oDown = Control().KeyDown.Connect(Write("down "));
  const ScopedConnection oPress = Control().KeyPress.Connect(Write("press "));
  const ScopedConnection oUp = Control().KeyUp.Connect(Write("up "));
  ActivateFrame();
  Panel->SetFocus();
  Press("a");
  WaitFor("the keys", [&] { return sKeys == "down 65 press 97 up 65 "; });
  // A handler that takes the key keeps it from what would come of it.
  Control().KeyDown.Connect([](Integer& iKeyCode, Integer&) { iKeyCode = 0; });
  Press("b");
  WaitFor("the key that was taken", [&] { return sKeys == "down 65 press 97 up 65 down 66 up 66 "; });
}

TEST_F(BrowserPanelTest, APageUsesFilesOfAllFolders) {
  std::ofstream(Folder / "Default.htm")
      << "<!DOCTYPE html><html><head><link rel=\"stylesheet\" href=\"zelwbr.css\"><link rel=\"stylesheet\" "
         "href=\"own.css\"></head><body class=\"zelForm\"><p id=\"own\">Own</p></body></html>";
  std::ofstream(Folder / "own.css") << "#own { letter-spacing: 3px }";
  Control().HTMLPaths({Folder.string(), ZELWBR3_SOURCE_DIR "/html"});
  Control().PageDefault()->Show();
  EXPECT_EQ(Ask(Front(), "getComputedStyle(own).letterSpacing"), "3px");
  EXPECT_EQ(Ask(Front(), "[...document.styleSheets].length"), "2");
  EXPECT_NE(Ask(Front(), "getComputedStyle(document.documentElement).getPropertyValue('--zel-paper')"), "");
  ExpectLiveEqualsReplica(Front());
}

TEST_F(BrowserPanelTest, APanelDestroyedInAWaitEndsIt) {
  const auto oPage = Control().PageDefault();  // outlives its control, as one that a host holds does
  wxTheApp->CallAfter([&] { Panel->Destroy(); });
  EXPECT_THROW(oPage->Show(), WaitError);
  WaitFor("the end of its views", [] { return WebView::Count() == 0; });
}

}  // namespace
}  // namespace ZELWbr3::Desktop
