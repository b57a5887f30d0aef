// Commands that change the instance, while they go on; what they ask, call and
// tell stands in tests/pictures.

#include "tests/support/Shown.h"
#include "zelwbr3/pages/analyzer/PageDBAnalyzer.h"
#include "zelwbr3/pages/main/PageMain.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

constexpr int Offline = 2;
constexpr int Admin = 3;
constexpr int Start = 2;
constexpr int Stop = 3;

struct ShownPage : Shown {
  ShownPage(const std::string& sPage, const std::string& sRecording, const Changes& changes = {})
      : Shown(sRecording, changes) {
    Show(sPage);
    Quiet();
  }

  std::string Pointer() { return "pointer " + std::to_string(Platform.ScreenPointer().MousePointer()); }
};

TEST(StateCommands, ShowTheWaitCursorAndThePicture) {
  ShownPage o("Main", "new-7.6");
  const auto Look = [&] { return o.Pointer() + ", wait " + o.At("imgInstance").getAttribute("data-wait"); };
  std::string sDuring;
  o.OnCall = [&](const std::string& sCall) {
    if (sCall == "Admin") sDuring = Look();
  };
  o.Answer("yes");
  o.Item(Admin);
  EXPECT_EQ(sDuring, "pointer 11, wait true");
  EXPECT_EQ(Look(), "pointer 0, wait false");
}

TEST(AnalyzerCommands, DisableTheirItemsAndShowTheWaitCursor) {
  ShownPage o("DBAnalyzer", "new-7.6");
  std::string sSeen;
  const auto Look = [&](const std::string& sWhere) { sSeen += sWhere + ": " + o.Pointer() + ", " + o.Items() + "\n"; };
  o.OnAsked = o.OnCall = Look;
  o.Answer("ok");
  o.Item(Start);
  Look("end");
  EXPECT_EQ(sSeen,
            "frmDBAnalyzerStart: pointer 0, (Start) (Stop) (Delete Protocols)\n"
            "Analyzer.Start: pointer 11, (Start) (Stop) (Delete Protocols)\n"
            "end: pointer 0, (Start) Stop Delete Protocols\n");
}

TEST(AnalyzerCommands, NeedNoCommandList) {
  ShownPage o("DBAnalyzer", "demo");
  const auto oPage = o.Browser->PageDBAnalyzer();
  oPage->Commandlist(nullptr);
  oPage->Command(Stop);
  EXPECT_EQ(o.Lines(), "begin\ncall Analyzer.Stop()\ncomplete\n");
  EXPECT_TRUE(o.IsShown("rowStopped"));
}

TEST(Commands, EndQuietlyWhenTheHostTakesThePageAway) {
  ShownPage oAsked("Main", "new-7.6");
  oAsked.OnAsked = [&](const std::string&) { oAsked.Browser->CleanUp(); };
  oAsked.Answer("yes");
  oAsked.Item(Offline);
  EXPECT_EQ(oAsked.Lines(),
            "box Confirm Database Shut Down [question yesno]: Are you sure you want to shut down the database instance "
            "'NEW'? -> yes\n");

  ShownPage oFailing("Main", "new-7.6", {R"(fails = ["Admin"])"});
  oFailing.OnCall = [&](const std::string&) { oFailing.Browser->CleanUp(); };
  const auto oMain = oFailing.Browser->PageMain();
  oFailing.Answer("yes");
  oFailing.Item(Admin);
  EXPECT_TRUE(oFailing.Lines().ends_with("-> yes\nbegin\ncall Admin()\n"));
  // A page that is gone carries nothing out.
  oMain->Command(Offline);
  EXPECT_EQ(oFailing.Lines(), "");

  ShownPage oStarting("DBAnalyzer", "new-7.6");
  oStarting.OnAsked = [&](const std::string&) { oStarting.Browser->CleanUp(); };
  const auto oAnalyzer = oStarting.Browser->PageDBAnalyzer();
  oStarting.Item(Start);
  oAnalyzer->Command(Start);
  EXPECT_TRUE(oStarting.Lines().starts_with("begin\ndialog frmDBAnalyzerStart "));
  EXPECT_EQ(oStarting.Lines(), "");
}

}  // namespace
}  // namespace ZELWbr3::Testing
