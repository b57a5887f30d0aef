#include "tests/support/Shown.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/Told.h"
#include "zelwbr3/pages/config/PageParameter.h"
#include "zelwbr3/pages/main/PageMain.h"
#include "zelwbr3/pages/monitor/PageSQLTable.h"
#include "zelwbr3/pages/monitor/PageSysInfo.h"

namespace ZELWbr3::Testing {
namespace {

constexpr int Escape = 27;
constexpr int F5 = 116;

/// A view that delivers as many rows as a test wants, one a block, and calls
/// back at each block.
class EndlessView : public ZELLib3::SysInfo {
 public:
  int Blocks = 1000;
  int Delivered = 0;
  int Opened = 0;
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
    ++Opened;
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
class ReadAll : public testing::Test {
 protected:
  ReadAll() {
    Told = std::make_unique<Testing::Told>(std::make_shared<TestDatabase>());
    Told->Show(Told->Browser.PageMain());
    Told->Browser.PageSysInfo()->Commandlist(Told->Commandlist);
    Told->Browser.PageSysInfo()->Show(Told->Database, View);
    Told->Lines();
  }

  /// Does something while the message loop runs after that many rows.
  void AtRow(int iRow, std::function<void()> oAct) {
    View->OnBlock = [this, iRow, oAct = std::move(oAct)](int iDelivered) {
      if (iDelivered == iRow) Told->Platform.MessagePump().Post(oAct);
    };
  }
  std::string Footer() { return Told->Text("txtFormFooter"); }
  std::string Buttons() {
    return Told->Find("btnReadMore")->className() + (Told->Find("btnReadMore")->hasAttribute("disabled") ? "!" : "");
  }

  std::shared_ptr<EndlessView> View = std::make_shared<EndlessView>();
  std::unique_ptr<Testing::Told> Told;
};

void ShowFirstView(Told& oTold) {
  oTold.Browser.PageSysInfo()->Show(oTold.Database, oTold.Database->SysInfos()->Item(1));
}

TEST(MonitorSysInfo, ColumnsAreMadeFromTheView) {
  Told oTold(R"json("SysInfos": [{"Index": 1, "Name": "V", "BlockSize": 2,
      "Columns": [{"Name": "ID", "Title": "Number"}, {"Name": "", "Title": "(null)"}, {"Name": "C", "Title": ""}],
      "Rows": [["1", "(null)", ""], ["<i>", "b", "(null)"]]}])json");
  ShowFirstView(oTold);
  EXPECT_EQ(oTold.Cells("tabSysInfo", 0),
            "ID .zelTblColHdrStd 'Number'\n .zelTblColHdrStd\nC .zelTblColHdrStd '' 100%\n");
  EXPECT_EQ(oTold.Cells("tabSysInfo", 2), "1 .zelTblCellStd\n .zelTblCellStd\n  .zelTblCellStdLast\n");
  EXPECT_EQ(oTold.Rows("tabSysInfo"), "ID||C\n1||~\n<i>|b|\n");
  EXPECT_EQ(oTold.Text("txtFormFooter"), "Rows: 2");
}

TEST(MonitorSysInfo, ARecordIsNamesAndValues) {
  Told oTold(R"json("SysInfos": [{"Index": 1, "Name": "R", "IsRecord": true,
      "Columns": [{"Name": "NAME", "Title": "(null)"}, {"Name": "", "Title": "Code"}, {"Name": "C", "Title": "(null)"}],
      "Rows": [["DEMO", "(null)", ""]]}])json");
  ShowFirstView(oTold);
  EXPECT_EQ(oTold.Rows("tabSysInfo"), "Name|Value\nNAME|DEMO\n~|\nC|~\n");
  EXPECT_EQ(oTold.Cells("tabSysInfo", 0), "Name .zelTblColHdrStd\nValue .zelTblColHdrStd 100%\n");
  EXPECT_EQ(oTold.Cells("tabSysInfo", 3), "  .zelTblCellStd 'Code'\n .zelTblCellStd\n");
  EXPECT_EQ(oTold.Text("txtFormFooter"), "Rows: 1");
}

TEST(MonitorSysInfo, EmptyAndUnreadableViews) {
  const std::string sViews = R"json("SysInfos": [{"Index": 1, "Name": "E", "Columns": [{"Name": "A"}, {"Name": "B"}],
                                "Rows": []}])json";
  Told oEmpty(sViews);
  ShowFirstView(oEmpty);
  EXPECT_EQ(oEmpty.Rows("tabSysInfo"), "A|B\n");
  EXPECT_EQ(oEmpty.Text("txtFormFooter"), "Rows: 0");

  Told oFailing(sViews, "\"fails\": [\"SysInfo.Open\"]");
  ShowFirstView(oFailing);
  EXPECT_EQ(oFailing.Lines(), "box Error [exclamation ok]: -24988 SQL error -> ok\npage SysInfo\n");
  EXPECT_EQ(oFailing.Text("txtFormFooter"), "Rows: 0");
  EXPECT_EQ(oFailing.Find("btnReadAll")->className(), "zelBtnEmphDsbl");
  // Nothing was opened, so there is nothing to read on.
  oFailing.Browser.PageSysInfo()->Command(2);
  EXPECT_EQ(oFailing.Lines(), "");
}

const std::string SevenRows = R"json("SQLTables": [{"Owner": "O", "Name": "T", "BlockSize": 3,
    "Columns": [{"Name": "A", "Title": "(null)"}], "Rows": [["1"], ["2"], ["3"], ["4"], ["5"], ["6"], ["7"]]}])json";

/// Shows the table of seven rows, with commands; what was told meanwhile.
std::string ShowSevenRows(Told& oTold) {
  const auto oTable = oTold.Database->SQLTables()->NewTable();
  oTable->Owner("O");
  oTable->Name("T");
  oTold.Browser.PageSQLTable()->Commandlist(oTold.Commandlist);
  oTold.Browser.PageSQLTable()->Show(oTold.Database, oTable);
  return oTold.Lines();
}

TEST(MonitorSQLTable, BlocksAreReadOneByOneAndAllAtOnce) {
  Told oTold(SevenRows);
  ShowSevenRows(oTold);
  EXPECT_EQ(oTold.Text("txtFormTitle"), "O.T");
  EXPECT_EQ(oTold.Text("txtFormFooter"), "Rows: 3");
  EXPECT_EQ(oTold.Items(), "&Close Read &More Read &All");
  EXPECT_EQ(oTold.Find("btnReadMore")->className(), "zelBtnEmph");

  oTold.Click("btnReadMore");
  EXPECT_EQ(oTold.Lines(), "begin\ncomplete\n");
  EXPECT_EQ(oTold.Rows("tabSQLTable"), "A\n1\n2\n3\n4\n5\n6\n");
  oTold.Item(3);
  EXPECT_EQ(oTold.Rows("tabSQLTable"), "A\n1\n2\n3\n4\n5\n6\n7\n");
  EXPECT_EQ(oTold.Text("txtFormFooter"), "Rows: 7");
  EXPECT_EQ(oTold.Items(), "&Close (Read &More) (Read &All)");
  EXPECT_EQ(oTold.Find("btnReadAll")->className(), "zelBtnEmphDsbl");

  // A button that says it is disabled is.
  oTold.Lines();
  oTold.Click("btnReadMore");
  EXPECT_EQ(oTold.Lines(), "");
  // A refresh begins with the first block again.
  oTold.Key(F5);
  EXPECT_EQ(oTold.Rows("tabSQLTable"), "A\n1\n2\n3\n");
}

TEST(MonitorSQLTable, AFailureEndsTheReadingAndALaterClickStillWorks) {
  Told oTold(SevenRows, "\"fails\": [\"SQLTable.ReadMore\"]");
  ShowSevenRows(oTold);
  for (int i = 0; i < 2; ++i) {
    oTold.Click("btnReadAll");
    EXPECT_EQ(oTold.Lines(), "begin\nbox Error [exclamation ok]: -24988 SQL error -> ok\ncomplete\n");
    EXPECT_EQ(oTold.Rows("tabSQLTable"), "A\n1\n2\n3\n");
    EXPECT_EQ(oTold.Items(), "&Close Read &More Read &All");
  }
  // A cell that cannot be read leaves the rows read, and their number.
  Told oCell(SevenRows, "\"raises\": [\"SQLTable.Value\"]");
  EXPECT_TRUE(ShowSevenRows(oCell).starts_with("box Error"));
  EXPECT_EQ(oCell.Text("txtFormFooter"), "Rows: 3");
  EXPECT_EQ(oCell.Find("btnReadMore")->className(), "zelBtnEmph");
}

TEST_F(ReadAll, ShowsHowFarItIsAndNothingReEntersIt) {
  std::string sSeen;
  AtRow(5, [&] {
    sSeen = Footer() + " " + Buttons() + " " + Told->Items();
    Told->Browser.PageSysInfo()->Command(3);
    Told->Browser.PageSysInfo()->Command(2);
    Told->Platform.FrontFrame().Click("btnReadAll");
    Told->Commandlist->ClickItem(1);
  });
  Told->Click("btnReadAll");
  EXPECT_EQ(sSeen, "Rows: 5 zelBtnEmphDsbl! &Close (Read &More) (Read &All)");
  // The item closed the page, which ended the reading.
  EXPECT_EQ(View->Delivered, 5);
  EXPECT_EQ(Told->Lines(), "begin\npage Main\ncomplete\n");
  EXPECT_EQ(Told->Browser.ActPage(), 2);
}

TEST_F(ReadAll, EscapeEndsItAndStaysOnThePage) {
  AtRow(5, [&] { EXPECT_TRUE(Told->Platform.FrontFrame().Key(Escape)); });
  for (const bool bClick : {true, false}) {
    View->Open();
    bClick ? Told->Click("btnReadAll") : Told->Item(3);
    EXPECT_EQ(Footer(), "Rows: 5");
    EXPECT_EQ(Buttons(), "zelBtnEmph");
    EXPECT_EQ(Told->Lines(), "begin\ncomplete\n");
  }
  EXPECT_EQ(View->Paused, 2) << "the instance is told each time";
  // Without a reading it leaves.
  View->OnBlock = [](int) {};
  Told->Key(Escape);
  EXPECT_EQ(Told->Lines(), "page Main\n");
}

TEST_F(ReadAll, LeavingThePageEndsIt) {
  const auto oOther = std::make_shared<EndlessView>();
  oOther->Blocks = 1;
  const std::vector<std::pair<const char*, std::function<void()>>> ways = {
      {"another frame", [&] { Told->Browser.ShowOnTop(0); }},
      {"another page", [&] { Told->Browser.PageMain()->Show(Told->Database); }},
      {"another page in the frame",
       [&] { Told->Browser.PageParameter()->Show(Told->Database, std::make_shared<ZELLib3::Parameter>()); }},
      {"the same page with another view", [&] { Told->Browser.PageSysInfo()->Show(Told->Database, oOther); }},
      {"an empty frame", [&] { Told->Browser.Clear(2); }},
      {"a refresh", [&] { Told->Browser.PageSysInfo()->Command(0); }},
  };
  for (const auto& [sWay, oLeave] : ways) {
    SCOPED_TRACE(sWay);
    View->OnBlock = [](int) {};
    Told->Browser.PageSysInfo()->Show(Told->Database, View);
    AtRow(5, oLeave);
    Told->Click("btnReadAll");
    EXPECT_LE(View->Delivered, 6);
  }
  EXPECT_EQ(Footer(), "Rows: 1");  // refreshed
  Told->Lines();

  AtRow(5, [&] { Told->Browser.CleanUp(); });
  Told->Click("btnReadAll");
  EXPECT_EQ(View->Delivered, 5);
  EXPECT_EQ(Told->Lines(), "begin\n");
  EXPECT_EQ(View.use_count(), 1);
}

TEST_F(Shown, TheControlMayBeDestroyedWhileAllRowsAreRead) {
  const auto oView = std::make_shared<EndlessView>();
  for (const bool bClick : {true, false}) {
    Control = std::make_unique<Browser>(Platform);
    Control->HTMLPath(ZELWBR3_SOURCE_DIR "/html");
    const auto oPage = Control->PageSysInfo();
    oPage->Commandlist(Commandlist);
    oPage->Show(Instance, oView);
    oView->OnBlock = [&](int iDelivered) {
      if (iDelivered == 5) Platform.MessagePump().Post([&] { Control.reset(); });
    };
    bClick ? Click("btnReadAll") : Commandlist->ClickItem(3);
    EXPECT_EQ(Control, nullptr);
    EXPECT_EQ(oView->Delivered, 5);
  }
}

TEST_F(ReadAll, APageLeftDuringAnErrorDisplayIsLeftAlone) {
  View->OnBlock = [](int) { throw ZELLib3::InstanceError({-7, "gone"}); };
  Told->OnAsked = [&](const std::string&) { Told->Browser.CleanUp(); };
  Told->Click("btnReadMore");
  EXPECT_TRUE(Told->Lines().starts_with("begin\nbox Error [exclamation ok]: -7 gone -> ok\n"));
  EXPECT_EQ(View.use_count(), 1);
}

TEST_F(ReadAll, AnInstanceThatDeliversNothingMoreIsNotAskedForEver) {
  View->Stuck = true;
  Told->Click("btnReadAll");
  EXPECT_TRUE(Told->Lines().starts_with("begin\nbox Error [exclamation ok]: "));
  EXPECT_EQ(Footer(), "Rows: 1");
}

}  // namespace
}  // namespace ZELWbr3::Testing
