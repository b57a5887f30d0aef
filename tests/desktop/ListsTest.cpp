#include "tests/desktop/TestWindow.h"
#include "zelwbr3/pages/monitor/PageSysInfo.h"

#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/timer.h>

#include <algorithm>
#include <utility>

namespace ZELWbr3::Desktop {
namespace {

/// Rows of a number, a name and a remark, some in a block.
class TestView : public ZELLib3::SysInfo {
 public:
  std::vector<std::vector<std::string>> Rows;
  int BlockSize = 50;
  int Delivered = 0;
  std::function<void()> OnBlock = [] {};

  std::string Name() const override { return "TEST"; }
  bool IsEmpty() const override { return Rows.empty(); }
  ZELLib3::Long RowCount() const override { return Delivered; }
  ZELLib3::Long ColumnCount() const override { return 3; }
  std::string ColumnName(ZELLib3::Long l) const override {
    return std::vector<std::string>{"ID", "NAME", "REMARK"}.at(std::size_t(l));
  }
  std::string ColumnTitle(ZELLib3::Long) const override { return "(null)"; }
  bool Open() override {
    m_iRow = Delivered = 0;
    return ReadMore();
  }
  bool ReadMore() override {
    Delivered = std::min(Delivered + BlockSize, static_cast<int>(Rows.size()));
    OnBlock();
    return true;
  }
  bool NextRow() override { return m_iRow++ < Delivered; }
  std::string Value(ZELLib3::Long l) const override { return Rows.at(std::size_t(m_iRow - 1)).at(std::size_t(l)); }
  bool EndOfBlock() const override { return m_iRow >= Delivered; }
  bool HasMore() const override { return Delivered < static_cast<int>(Rows.size()); }

 private:
  int m_iRow = 0;
};

/// A list on the real page of the real browser.
class ListsTest : public TestPanel {
 protected:
  ListsTest() { View->Rows = {{"10", "Zoe", "a\tb"}, {"9", "adam", ""}, {"100.5", "Eve", "x"}, {"n/a", "Bea 2", "y"}}; }

  void ShowView() {
    Panel->Browser().PageSysInfo()->Show(std::make_shared<ZELLib3::Database>(), View);
    Front().Focus();
  }
  /// The names in the order in which they are seen.
  std::string Names() {
    return Ask(Front(),
               "[...document.querySelectorAll('#tabSysInfo td:nth-child(2)')]"
               ".filter(o => o.getClientRects().length > 0).map(o => o.textContent).join(' ')");
  }
  void WaitForNames(const std::string& sNames) {
    std::string sSeen;
    try {
      WaitFor(sNames.c_str(), [&] { return (sSeen = Names()) == sNames; });
    } catch (const std::runtime_error&) {
      ADD_FAILURE() << "Waited for " << sNames << ", seen last: " << sSeen;
    }
  }
  /// Waits until a long list has been laid out as a whole.
  std::string Count() { return Ask(Front(), "document.querySelector('.zelListCount').textContent"); }
  /// Asks the page now and then: asked all the time it would come to nothing else.
  void WaitForPage(const char* sWhat, const std::function<bool()>& oCondition) {
    bool bNext = true;
    wxTimer oNext;
    oNext.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { bNext = true; });
    oNext.Start(30);
    WaitFor(sWhat, [&] { return std::exchange(bNext, false) && oCondition(); });
  }
  /// Scrolls to the end until there are no more.
  void WaitForAllRows() {
    WaitForPage("all rows", [&] {
      Ask(Front(), "scrollTo(0, document.documentElement.scrollHeight)");
      return Count().empty();
    });
  }
  /// A click on an element that has no id.
  void ClickOnThe(const std::string& sSelector) {
    const std::string sElement = "document.querySelector('" + sSelector + "')";
    Ask(Front(), sElement + ".id = 'here'");
    ClickOn(Front(), "here");
    Ask(Front(), "document.getElementById('here').removeAttribute('id')");
  }
  static std::string Heading(int iColumn) {
    return "#tabSysInfo tr:first-child > :nth-child(" + std::to_string(iColumn) + ")";
  }
  std::string Copied() {
    wxTextDataObject oText;
    if (!wxTheClipboard->Open()) return "";
    wxTheClipboard->GetData(oText);
    wxTheClipboard->Close();
    return oText.GetText().utf8_string();
  }

  std::shared_ptr<TestView> View = std::make_shared<TestView>();
};

TEST_F(ListsTest, HeadingsSortNumbersAsNumbersAndGoBackToTheOrderRead) {
  ShowView();
  ExpectLiveEqualsReplica(Front());
  ClickOnThe(Heading(1));
  WaitForNames("adam Zoe Eve Bea 2");
  ClickOnThe(Heading(1));
  WaitForNames("Eve Zoe adam Bea 2");
  Press("ctrl+a");
  ClickOnThe(Heading(1));
  WaitForNames("Zoe adam Eve Bea 2");
  ExpectLiveEqualsReplica(Front());
}

TEST_F(ListsTest, TheKeyboardSorts) {
  ShowView();
  Ask(Front(), "document.querySelector('" + Heading(2) + " button').focus()");
  Press("Return");
  WaitForNames("adam Bea 2 Eve Zoe");
  Press("space");
  WaitForNames("Zoe Eve Bea 2 adam");
  Press("Tab");
  Press("Return");
  WaitForNames("Zoe Eve Bea 2 adam");  // remarks "a b", "x", "y", and none last
  // The control reads what it has written, in its order.
  EXPECT_EQ(ByID(Front(), "tabSysInfo").tBodies(0)->rows(2)->cells(1)->innerText(), "Zoe");
  EXPECT_EQ(ByID(Front(), "tabSysInfo").tBodies(0)->rows(3)->cells(1)->innerText(), "adam");
}

TEST_F(ListsTest, TheFilterKeepsRowsThatMatchAndThoseReadLater) {
  View->BlockSize = 3;
  ShowView();
  ClickOnThe(Heading(2));
  WaitForNames("adam Eve Zoe");
  Press("ctrl+f");
  Press("a");
  WaitForNames("adam Zoe");
  ClickOn(Front(), "btnReadMore");
  WaitForNames("adam Bea 2 Zoe");
  Press("ctrl+f");
  for (const char* sKey : {"B", "e", "a", "space", "2"}) Press(sKey);
  WaitForNames("Bea 2");
  EXPECT_EQ(Ask(Front(), "document.querySelector('.zelListCount').textContent"), "1 of 4");
  Press("Escape");
  WaitForNames("adam Bea 2 Eve Zoe");
  ClickOnThe(Heading(2));
  ClickOnThe(Heading(2));
  WaitForNames("Zoe adam Eve Bea 2");
  ExpectLiveEqualsReplica(Front());
  // With nothing to empty it leaves the page.
  const DesktopWebBrowser& oPage = Front();
  Press("ctrl+f");
  Press("Escape");
  WaitFor("the page to close", [&oPage] { return !oPage.IsVisible(); });
}

TEST_F(ListsTest, ASelectionIsCopiedAsASpreadsheetTakesIt) {
  ShowView();
  ClickOnThe(Heading(2));
  WaitForNames("adam Bea 2 Eve Zoe");
  Press("ctrl+a");
  Press("ctrl+c");
  const std::string sRows = "9\tadam\t \nn/a\tBea 2\ty\n100.5\tEve\tx\n10\tZoe\ta b\n";
  WaitFor("the copy", [&] { return Copied() == "ID\tNAME\tREMARK\n" + sRows; });
}

TEST_F(ListsTest, ALongListIsSeenAsFarAsTheUserScrolls) {
  View->Rows.clear();
  for (int i = 0; i < 7000; ++i) View->Rows.push_back({std::to_string(i), "n", "r"});
  View->BlockSize = 7000;
  ShowView();
  // Rows that are still to be laid out are copied as well.
  Press("ctrl+a");
  Press("ctrl+c");
  WaitFor("the copy", [this] { return Copied().starts_with("ID\tNAME\tREMARK\n0\tn\tr\n"); });
  EXPECT_EQ(std::ranges::count(Copied(), '\n'), 7001);
  EXPECT_TRUE(Copied().ends_with("\n6999\tn\tr\n"));
  WaitForPage("the rows that come by themselves", [this] { return Count() == "6750 of 7000"; });
  WaitForAllRows();
  EXPECT_EQ(Names().size(), 7000 * 2 - 1);
  ExpectLiveEqualsReplica(Front());
}

TEST_F(ListsTest, ClosingTheWindowEndsReading) {
  View->Rows.resize(200'000, {"1", "n", "r"});
  ShowView();
  bool bClosed = false;
  Frame->Bind(wxEVT_CLOSE_WINDOW, [&](wxCloseEvent&) { bClosed = true; });
  View->OnBlock = [this] {
    if (View->Delivered == 5000) wxTheApp->CallAfter([this] { Frame->Close(); });
  };
  ClickOn(Front(), "btnReadAll");
  WaitFor("the close", [&] { return bClosed; });
  EXPECT_EQ(View->Delivered, 5000);
}

TEST_F(ListsTest, EscapeEndsReadingThatAClickHasBegun) {
  for (int i = 0; i < 200'000; ++i) View->Rows.push_back({std::to_string(i), "n", "r"});
  ShowView();
  View->OnBlock = [this] {
    // Without waiting, which would pump messages in the middle of a block.
    if (View->Delivered == 5000) Begin("xdotool key Escape");
  };
  ClickOn(Front(), "btnReadAll");
  WaitFor("the end",
          [&] { return View->Delivered >= 5000 && ByID(Front(), "btnReadAll").className() == "zelBtnEmph"; });
  EXPECT_LT(View->Delivered, 200'000);
  // What was read stays; the headings and the template are rows, too.
  const std::string sRows = std::to_string(View->Delivered + 2);
  WaitForPage("the rows read",
              [&] { return Ask(Front(), "document.querySelectorAll('#tabSysInfo tr').length") == sRows; });
}

}  // namespace
}  // namespace ZELWbr3::Desktop
