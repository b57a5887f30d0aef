#include "tests/desktop/TestWindow.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/pages/config/PageParameters.h"
#include "zelwbr3/pages/main/PageMain.h"

namespace ZELWbr3::Desktop {
namespace {

/// Pages with a tab strip on the real browser, by mouse and by keyboard.
class TabsTest : public TestPanel {
 protected:
  TabsTest() {
    Panel->Platform().Theme(Theme::Light);
    Panel->Browser().PageMain()->Show(Instance);
  }

  std::string Title() { return ByID(Front(), "txtFormTitle").innerText(); }
  std::string Selected() { return ByID(Front(), "tbsTabStripParameters").getAttribute("selectedtab"); }
  /// Waits until an element has the focus, for the browser and for the program.
  void WaitForFocus(const std::string& sID) {
    WaitFor(("the focus of " + sID).c_str(), [&] { return Front().Document()->activeElement()->id() == sID; });
    EXPECT_EQ(Ask(Front(), "document.activeElement.id"), sID);
  }

  std::shared_ptr<ZELLib3::Database> Instance =
      Recorded::OpenRecording(ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json");
};

TEST_F(TabsTest, AStripIsOneStopOfTheTabKeyAndArrowsMoveInIt) {
  Panel->Browser().PageParameters()->Show(Instance);
  ExpectLiveEqualsReplica(Front());

  ClickOn(Front(), "tbsTab1Parameters");
  WaitFor("the tab", [&] { return Selected() == "1"; });
  WaitForFocus("tbsTab1Parameters");
  Press("Right");
  WaitForFocus("tbsTab2Parameters");
  EXPECT_EQ(Ask(Front(), "document.activeElement.matches(':focus-visible')"), "true");
  Press("End");
  WaitForFocus("tbsTab3Parameters");
  Press("Right");
  WaitForFocus("tbsTab0Parameters");
  Press("Left");
  WaitForFocus("tbsTab3Parameters");
  EXPECT_EQ(Selected(), "1");
  Press("space");
  WaitFor("the tab", [&] { return Selected() == "3"; });
  Press("Home");
  WaitForFocus("tbsTab0Parameters");
  Press("Return");
  WaitFor("the tab", [&] { return Selected() == "0"; });
  ExpectLiveEqualsReplica(Front());

  // Out of the strip from a tab in its middle, and back to the selected one.
  Press("Right");
  WaitForFocus("tbsTab1Parameters");
  Press("Tab");
  WaitForFocus("PHISTCACHE_SIZE");
  Press("shift+Tab");
  WaitForFocus("tbsTab0Parameters");
  ExpectLiveEqualsReplica(Front());
}

TEST_F(TabsTest, AHistoryUnfoldsAndAParameterOpensByKeyboard) {
  Panel->Browser().PageParameters()->Show(Instance);
  ClickOn(Front(), "PHISTCACHE_SIZE");
  const auto Class = [&] { return ByID(Front(), "PHISTCACHE_SIZE").className(); };
  WaitFor("the history", [&] { return Class() == "zelTblCellExpOpen"; });
  ExpectLiveEqualsReplica(Front());
  EXPECT_EQ(Ask(Front(), "[...document.querySelectorAll('#rowItem')].map(o => o.innerText.trim()).length"), "2");
  WaitForFocus("PHISTCACHE_SIZE");
  Press("space");
  WaitFor("the end of the history", [&] { return Class() == "zelTblCellExpClosed"; });
  Press("Return");
  WaitFor("the history", [&] { return Class() == "zelTblCellExpOpen"; });
  ExpectLiveEqualsReplica(Front());

  Press("Tab");
  WaitForFocus("PARAMCACHE_SIZE");
  Press("Return");
  WaitFor("the parameter", [&] { return Title() == "Parameter" && Front().Settled(); });
  ExpectLiveEqualsReplica(Front());
  EXPECT_EQ(Ask(Front(), "document.getElementById('txtActVal').innerText"), "10000");
  Press("Escape");
  WaitFor("the main page", [&] { return Title() == "Instance Overview"; });
}

}  // namespace
}  // namespace ZELWbr3::Desktop
