// What a refresh leaves as the user has made it, on the real browser.

#include "tests/desktop/TestWindow.h"
#include "tests/support/ChangedRecording.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/shell/Pages.h"

#include <algorithm>

namespace ZELWbr3::Desktop {
namespace {

/// Rows of a key and a figure.
class TestView : public ZELLib3::SysInfo {
 public:
  std::vector<std::pair<int, int>> Rows;

  std::string Name() const override { return "TEST"; }
  bool IsEmpty() const override { return Rows.empty(); }
  ZELLib3::Long RowCount() const override { return static_cast<int>(Rows.size()); }
  ZELLib3::Long ColumnCount() const override { return 2; }
  std::string ColumnName(ZELLib3::Long l) const override { return l == 0 ? "KEY" : "FIGURE"; }
  std::string ColumnTitle(ZELLib3::Long) const override { return "(null)"; }
  bool Open() override {
    m_iRow = -1;
    return true;
  }
  bool NextRow() override { return ++m_iRow < static_cast<int>(Rows.size()); }
  std::string Value(ZELLib3::Long l) const override {
    const auto& [iKey, iFigure] = Rows.at(static_cast<std::size_t>(m_iRow));
    return l == 0 ? "key " + std::to_string(iKey) : std::to_string(iFigure);
  }
  bool EndOfBlock() const override { return m_iRow + 1 >= static_cast<int>(Rows.size()); }

 private:
  int m_iRow = -1;
};

class RefreshTest : public TestPanel {
 protected:
  /// Refreshes the page in front, by itself or because the user wants it, and waits
  /// until the browser shows it.
  void Refresh(bool bAsked = true) {
    int iPages = 0;
    const ScopedConnection oCount = Control().PageComplete.Connect([&](const auto&) { ++iPages; });
    const auto oPage = std::dynamic_pointer_cast<DataPage>(Control().ActPageObj());
    bAsked ? oPage->Command(DataPage::CommandRefresh) : oPage->RefreshUnasked();
    WaitFor("the refreshed page", [&] { return iPages == 1 && Front().Settled(); });
    ExpectLiveEqualsReplica(Front());
  }
  void ShowList(int iRows) {
    for (int i = 0; i < iRows; ++i) View->Rows.emplace_back(i, i * 10);
    Control().PageSysInfo()->Show(std::make_shared<ZELLib3::Database>(), View);
    Front().Focus();
  }
  /// Marks what must still be the same element later.
  void Mark(const std::string& sElement) { Ask(Front(), sElement + ".mark = 'marked'; ''"); }
  std::string Marked(const std::string& sElement) { return Ask(Front(), "String(" + sElement + ".mark)"); }

  std::shared_ptr<TestView> View = std::make_shared<TestView>();
};

constexpr const char* Rows =
    "[...document.querySelectorAll('#tabSysInfo tr:not([aria-hidden]) > td:first-child')]"
    ".filter(o => o.getClientRects().length > 0 && o.textContent !== '')";

TEST_F(RefreshTest, ChangesWhatDiffersAndNothingElse) {
  const auto oDatabase = std::make_shared<Testing::ChangedRecording>("demo");
  const auto oPage = Control().PageMain();
  oPage->Show(oDatabase);
  Mark("document.body");
  Mark("document.querySelector('.zelFindings a[id]')");
  Mark("document.getElementById('General.Name.Val').firstChild");
  Ask(Front(),
      "globalThis.iWrites = 0; new MutationObserver((o) => (iWrites += o.length)).observe(document.body,"
      "{ subtree: true, childList: true, characterData: true, attributes: true }); ''");
  Refresh();
  EXPECT_EQ(Ask(Front(), "String(iWrites)"), "0");

  oDatabase->Change({"StateInfo.SessionsUsed = 9", "StateInfo.HistoryLost = false", "InstanceName = \"OTHER\""});
  Refresh();
  EXPECT_EQ(Ask(Front(), "document.getElementById('txtSessions').textContent.trim()"), "Used: 9 Free: 41");
  EXPECT_EQ(Ask(Front(), "document.querySelectorAll('.zelFindings > li').length"), "6");
  EXPECT_EQ(Marked("document.body"), "marked");
  EXPECT_EQ(Marked("document.querySelector('.zelFindings a[id]')"), "marked");
  EXPECT_EQ(Text("txtName"), "OTHER");
  // It can still be worked with.
  ClickOn(Front(), "#FINDING0");
  WaitFor("the page", [&] { return Control().ActPageObj()->Name() == "DataArea" && Front().Settled(); });
}

TEST_F(RefreshTest, KeepsFilterOrderPlaceAndFocusOfAList) {
  ShowList(3000);
  ClickOn(Front(), "#tabSysInfo th:nth-child(2)");
  ClickOn(Front(), "#tabSysInfo th:nth-child(2)");  // the greatest figure first
  ClickOn(Front(), ".zelListFilter");
  Press("k e y space 1");
  const auto First = [&] { return Ask(Front(), std::string(Rows) + "[0]?.textContent ?? ''"); };
  const auto Count = [&] { return Ask(Front(), "document.querySelector('.zelListCount').textContent"); };
  WaitFor("the filter", [&] { return First() == "key 1999" && Count() == "1111 of 3000"; });
  Ask(Front(), "scrollTo(0, 9000); ''");
  const std::string sSeen = "document.elementFromPoint(60, 300).closest('tr').cells[0].textContent";
  std::string sAt;
  WaitFor("the place", [&] {
    sAt = Ask(Front(),
              "scrollY === 9000 ? document.elementFromPoint(60, "
              "300)?.closest('tr:not(.zelListGap)')?.cells[0].textContent ?? '' : ''");
    return !sAt.empty();
  });
  Mark("document.elementFromPoint(60, 300).closest('tr')");

  View->Rows[1].second = 7;
  Refresh(false);
  WaitFor("the rows", [&] { return First() != "" && Count() == "1111 of 3000"; });
  EXPECT_EQ(Ask(Front(), "String(scrollY)"), "9000");
  EXPECT_EQ(Ask(Front(), sSeen), sAt);
  EXPECT_EQ(Marked("document.elementFromPoint(60, 300).closest('tr')"), "marked");
  EXPECT_EQ(Ask(Front(), "document.activeElement.className + document.activeElement.value"), "zelListFilterkey 1");
  EXPECT_EQ(Ask(Front(), "document.querySelector('[aria-sort]').ariaSort"), "descending");

  // Rows that come above do not move what the user looks at.
  for (int i = 0; i < 5; ++i) View->Rows.emplace_back(10000 + i, 100000 + i);
  Refresh();
  WaitFor("the rows", [&] { return Count() == "1116 of 3005"; });
  EXPECT_EQ(Ask(Front(), sSeen), sAt);
}

TEST_F(RefreshTest, MarksWhatChangedAndCountsWhatWent) {
  const auto oDatabase = std::make_shared<Testing::ChangedRecording>("demo");
  Control().PageMain()->Show(oDatabase);
  const auto Marked = [&] {
    return Ask(Front(), "[...document.querySelectorAll('[data-zel-mark]')].map(o => o.id || o.textContent).join(' ')");
  };
  EXPECT_EQ(Marked(), "");
  oDatabase->Change({"StateInfo.CacheHitRate = 96"});
  Refresh();
  EXPECT_EQ(Marked(), "DataCache.HitRate.Val");
  const std::string sTip = Ask(Front(), "document.getElementById('DataCache.HitRate.Val').title");
  EXPECT_TRUE(
      sTip.ends_with(": \xE2\x88\x92"
                     "3 %"))
      << sTip;
  Refresh();  // what is the same again keeps its tooltip
  EXPECT_EQ(Ask(Front(), "document.getElementById('DataCache.HitRate.Val').title"), sTip);

  ShowList(4);
  View->Rows[2].second = 25;
  View->Rows.erase(View->Rows.begin());
  View->Rows.emplace_back(9, 90);
  Refresh();
  EXPECT_EQ(Marked(), "25 key 990");
  EXPECT_EQ(Ask(Front(), "document.querySelector('.zelChanges').textContent"), "1 row is gone since the last refresh");
}

TEST_F(RefreshTest, KeepsFiguresThatCannotBeReadAgainAndSaysSo) {
  const auto oDatabase = std::make_shared<Testing::ChangedRecording>("demo");
  const auto oPage = Control().PageInfoActivity();
  oPage->Show(oDatabase);
  const auto Figures = [&] { return Ask(Front(), "document.getElementById('divFrmCnt').innerText"); };
  const auto Old = [&] {
    return Ask(Front(), "String(document.getElementById('divFrmCnt').matches('[data-zel-old]'))");
  };
  const std::string sBefore = Figures();
  oDatabase->Change(
      {"fails = [\"Activity.Refresh\"]", "LastError.ErrorCode = -8888", "LastError.ErrorText = \"connection broken\""});
  oPage->RefreshUnasked();  // without a box
  WaitFor("the error", [&] { return Text("txtUnread").find("-8888 connection broken") != std::string::npos; });
  WaitFor("the page", [&] { return Front().Settled(); });
  EXPECT_EQ(Old(), "true");
  EXPECT_EQ(Figures(), sBefore);
  ExpectLiveEqualsReplica(Front());
  oPage->RefreshUnasked();
  WaitFor("since when", [&] { return Text("txtUnread").starts_with("Could not be read since "); });
  WaitFor("the page", [&] { return Front().Settled(); });
  oDatabase->Change({"fails = []"});
  ClickOn(Front(), "#lnkTryAgain");
  WaitFor("the figures", [&] { return Old() == "false" && Front().Settled(); });
  EXPECT_EQ(Figures(), sBefore);
  ExpectLiveEqualsReplica(Front());
}

TEST_F(RefreshTest, AnInstanceThatIsGoneIsOnePageUntilItIsBack) {
  const auto oDatabase = std::make_shared<Testing::ChangedRecording>("demo");
  const auto oPage = Control().PageMain();
  oPage->Show(oDatabase);
  const auto Seen = [&](const std::string& sSelector) {
    return Ask(Front(), "String(document.querySelector('" + sSelector + "').getClientRects().length > 0)");
  };
  EXPECT_EQ(Seen("#divGone") + Seen("#txtData"), "falsetrue");
  oDatabase->Change({"Connected = false", "LastError.ErrorCode = -8888", "LastError.ErrorText = \"it went\""});
  for (int i = 0; i < 2; ++i) Refresh();
  EXPECT_TRUE(oPage->IsUnread());
  EXPECT_EQ(Seen("#divGone") + Seen("#txtData") + Seen("#divHealth"), "truefalsetrue");
  EXPECT_EQ(Text("txtGoneName") + ": " + Text("txtGoneWhy"), "DEMO: -8888 it went");
  EXPECT_TRUE(Text("txtGoneSince").starts_with("Since ")) << Text("txtGoneSince");
  oDatabase->Change({"Connected = true"});
  ClickOn(Front(), "#btnTryAgain");
  WaitFor("the figures", [&] { return Seen("#divGone") + Seen("#txtData") == "falsetrue"; });
  EXPECT_FALSE(oPage->IsUnread());
}

TEST_F(RefreshTest, KeepsTheFocusInARowAndTheTab) {
  const auto oDatabase = Recording("demo");
  Control().PageParameters()->Show(oDatabase);
  Front().Focus();
  ClickOn(Front(), "#tbsTab1Parameters");
  WaitFor("the tab", [&] { return ByID(Front(), "tbsTab1Parameters").className() == "zelTbsLinkOn"; });
  Refresh(false);
  EXPECT_EQ(Ask(Front(), "document.querySelector('[role=tab][aria-selected=true]').id"), "tbsTab1Parameters");
  ClickOn(Front(), "#tbsTab0Parameters");
  Ask(Front(), "document.querySelector('#tabGeneral [id^=PARAM]').focus(); ''");
  const std::string sFocus = Ask(Front(), "document.activeElement.id");
  Refresh();
  EXPECT_EQ(Ask(Front(), "document.activeElement.id"), sFocus);
  WaitFor("the focus", [&] { return Front().Document()->activeElement()->id() == sFocus; });
  Press("Return");
  WaitFor("the parameter", [&] { return Control().ActPageObj()->Name() == "Parameter"; });
}

}  // namespace
}  // namespace ZELWbr3::Desktop
