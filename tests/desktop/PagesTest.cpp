#include "tests/desktop/TestWindow.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/shell/Pages.h"

namespace ZELWbr3::Desktop {
namespace {

/// The control's own pages on the real browser.
class PagesTest : public TestPanel {
 protected:
  PagesTest() { Panel->Platform().Theme(Theme::Light); }

  ZELWbr3::Browser& Control() { return Panel->Browser(); }
  static std::shared_ptr<ZELLib3::Database> Recording(const std::string& sName) {
    return Recorded::OpenRecording(ZELWBR3_SOURCE_DIR "/tests/recordings/" + sName + ".json");
  }
};

TEST_F(PagesTest, TheBrowserShowsWhatThePagesHaveWritten) {
  for (const char* sRecording : {"demo", "hostile", "full-data", "hot-standby"}) {
    SCOPED_TRACE(sRecording);
    const auto oDatabase = Recording(sRecording);
    const auto Check = [&](const auto& oPage) {
      SCOPED_TRACE(oPage->Name());
      oPage->Show(oDatabase);
      ExpectLiveEqualsReplica(Front());
    };
    Check(Control().PageMain());
    Check(Control().PageDataArea());
    Check(Control().PageLogArea());
    Check(Control().PageParameters());
    Check(Control().PageInfoCaches());
    Check(Control().PageInfoActivity());
    Check(Control().PageSessions());
    Check(Control().PageSysInfos());
    Check(Control().PageHistory());
    Check(Control().PageDBAnalyzer());
  }
  Control().PageDefault()->Show();
  ExpectLiveEqualsReplica(Front());
}

}  // namespace
}  // namespace ZELWbr3::Desktop
