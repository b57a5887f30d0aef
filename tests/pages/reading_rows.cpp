// Reading all rows of a view, and what happens to it while it goes on.

#include "tests/support/Shown.h"
#include "zelwbr3/dom/Style.h"
#include "zelwbr3/pages/config/PageParameter.h"
#include "zelwbr3/pages/main/PageMain.h"
#include "zelwbr3/pages/monitor/PageSysInfo.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

constexpr int Escape = 27;

/// A view that delivers as many rows as a test wants, one a block, and calls
/// back at each block.
class EndlessView : public ZELLib3::SysInfo {
 public:
  int Blocks = 1000;
  int Delivered = 0;
  int Paused = 0;
  bool Stuck = false;  ///< delivers nothing any more but has more
  std::function<void(int)> OnBlock = [](int) {};

  Long Index() const override { return 1; }
  std::string Name() const override { return "ENDLESS"; }
  bool IsEmpty() const override { return false; }
  Long RowCount() const override { return Delivered; }
  Long ColumnCount() const override { return 1; }
  std::string ColumnName(Long) const override { return "N"; }
  std::string ColumnTitle(Long) const override { return "(null)"; }
  bool Open() override {
    Delivered = 1;
    m_bRow = true;
    return true;
  }
  bool ReadMore() override {
    if (!Stuck) {
      ++Delivered;
      m_bRow = true;
    }
    OnBlock(Delivered);
    return true;
  }
  void Pause() override { ++Paused; }
  bool NextRow() override { return std::exchange(m_bRow, false); }
  std::string Value(Long) const override { return std::to_string(Delivered); }
  bool EndOfBlock() const override { return !m_bRow; }
  bool HasMore() const override { return Delivered < Blocks; }

 private:
  bool m_bRow = false;
};

/// The view on the screen, with its commands in the command list.
class ReadAll : public testing::Test, public Shown {
 protected:
  ReadAll() : Shown("new-7.6") {
    Show("Main");
    ShowView();
    Quiet();
  }

  void ShowView() { Browser->PageSysInfo()->Show(Database, View); }
  /// Does something while the message loop runs after that many rows.
  void AtRow(int iRow, std::function<void()> oAct) {
    View->OnBlock = [this, iRow, oAct = std::move(oAct)](int iDelivered) {
      if (iDelivered == iRow) Platform.MessagePump().Post(oAct);
    };
  }
  std::string Footer() { return Text("txtFormFooter"); }
  std::string Stop() { return At("btnStop").style().display() == "none" ? "" : "Stop "; }
  std::string ReadMore() {
    return At("btnReadMore").className() + (At("btnReadMore").hasAttribute("disabled") ? "!" : "");
  }

  std::shared_ptr<EndlessView> View = std::make_shared<EndlessView>();
};

}  // namespace

TEST_F(ReadAll, ShowsHowFarItIsAndNothingReEntersIt) {
  std::string sSeen;
  AtRow(5, [&] {
    sSeen = Footer() + " " + ReadMore() + " " + Stop() + Items();
    Browser->PageSysInfo()->Command(3);
    Browser->PageSysInfo()->Command(2);
    Platform.FrontFrame().Click("btnReadAll");
    Commandlist->ClickItem(1);
  });
  Click("btnReadAll");
  EXPECT_EQ(sSeen, "5 rows, reading zelBtnEmphDsbl! Stop &Close &Stop");
  // The item closed the page, which ended the reading.
  EXPECT_EQ(View->Delivered, 5);
  EXPECT_EQ(Lines(), "begin\npage Main\ncomplete\n");
  EXPECT_EQ(Browser->ActPage(), 2);
}

TEST_F(ReadAll, EscapeAndStopEndItAndStayOnThePage) {
  AtRow(5, [&] { EXPECT_TRUE(Platform.FrontFrame().Key(Escape)); });
  for (const bool bClick : {true, false}) {
    View->Open();
    bClick ? Click("btnReadAll") : Item(3);
    EXPECT_EQ(Footer(), "Rows: 5");
    EXPECT_EQ(ReadMore(), "zelBtnEmph");
    EXPECT_EQ(Lines(), "begin\ncomplete\n");
  }
  EXPECT_EQ(View->Paused, 2) << "the instance is told each time";
  for (const bool bButton : {true, false}) {
    AtRow(5, [&] { bButton ? Platform.FrontFrame().Click("btnStop") : Commandlist->ClickItem(5); });
    View->Open();
    Item(3);
    EXPECT_EQ(Footer() + " " + Stop() + Items(), "Rows: 5 &Close Read &More Read &All");
    EXPECT_EQ(Lines(), "begin\ncomplete\n");
  }
  // One that comes right after it was meant for the reading, too.
  View->OnBlock = [](int) {};
  Key(Escape);
  EXPECT_EQ(Lines(), "");
}

TEST_F(ReadAll, LeavingThePageEndsIt) {
  const auto oOther = std::make_shared<EndlessView>();
  oOther->Blocks = 1;
  const std::vector<std::pair<const char*, std::function<void()>>> ways = {
      {"another frame", [&] { Browser->ShowOnTop(0); }},
      {"another page", [&] { Browser->PageMain()->Show(Database); }},
      {"another page in the frame",
       [&] { Browser->PageParameter()->Show(Database, std::make_shared<ZELLib3::Parameter>()); }},
      {"the same page with another view", [&] { Browser->PageSysInfo()->Show(Database, oOther); }},
      {"an empty frame", [&] { Browser->Clear(2); }},
      {"a refresh", [&] { Browser->PageSysInfo()->Command(0); }},
  };
  for (const auto& [sWay, oLeave] : ways) {
    SCOPED_TRACE(sWay);
    View->OnBlock = [](int) {};
    ShowView();
    AtRow(5, oLeave);
    Click("btnReadAll");
    EXPECT_LE(View->Delivered, 6);
  }
  EXPECT_EQ(Footer(), "Rows: 1");  // refreshed
  static_cast<void>(Lines());      // the parameter that is none is an error

  AtRow(5, [&] { Browser->CleanUp(); });
  Click("btnReadAll");
  EXPECT_EQ(View->Delivered, 5);
  EXPECT_EQ(Lines(), "begin\n");
  EXPECT_EQ(View.use_count(), 1);
}

TEST_F(ReadAll, TheControlMayBeDestroyedWhileItGoesOn) {
  for (const bool bClick : {true, false}) {
    Browser = std::make_unique<ZELWbr3::Browser>(Platform);
    Browser->HTMLPath(ZELWBR3_SOURCE_DIR "/html");
    const auto oPage = Browser->PageSysInfo();
    oPage->Commandlist(Commandlist);
    oPage->Show(Database, View);
    AtRow(5, [&] { Browser.reset(); });
    bClick ? Click("btnReadAll") : Item(3);
    EXPECT_EQ(Browser, nullptr);
    EXPECT_EQ(View->Delivered, 5);
  }
}

TEST_F(ReadAll, APageLeftDuringAnErrorDisplayIsLeftAlone) {
  View->OnBlock = [](int) { throw ZELLib3::InstanceError({-7, "gone"}); };
  OnAsked = [&](const std::string&) { Browser->CleanUp(); };
  Click("btnReadMore");
  EXPECT_TRUE(Lines().starts_with("begin\nbox Error [exclamation ok]: -7 gone -> ok\n"));
  EXPECT_EQ(View.use_count(), 1);
}

TEST_F(ReadAll, AnInstanceThatDeliversNothingMoreIsNotAskedForEver) {
  View->Stuck = true;
  Click("btnReadAll");
  EXPECT_TRUE(Lines().starts_with("begin\nbox Error [exclamation ok]: "));
  EXPECT_EQ(Footer(), "Rows: 1");
}

}  // namespace ZELWbr3::Testing
