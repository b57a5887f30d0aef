#include "tests/desktop/TestWindow.h"
#include "tests/support/ChangedRecording.h"
#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/pages/monitor/PageSessions.h"
#include "zelwbr3/pages/monitor/PageSysInfo.h"
#include "zelwbr3/pages/monitor/PageSysInfos.h"

#include <wx/app.h>
#include <wx/filedlg.h>
#include <wx/timer.h>

#include <algorithm>
#include <cmath>
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
               "[...document.querySelectorAll('#tabSysInfo tr:not([aria-hidden]) > td:nth-child(2)')]"
               ".filter(o => o.getClientRects().length > 0).map(o => o.textContent).join(' ')");
  }
  void WaitForNames(const std::string& sNames) {
    WaitFor(sNames, [&] { return Names() == sNames; });
  }
  std::string Count() { return Ask(Front(), "document.querySelector('.zelListCount').textContent"); }
  /// Asks the page now and then: asked all the time it would come to nothing else.
  void WaitForPage(const std::string& sWhat, const std::function<bool()>& oCondition) {
    bool bNext = true;
    wxTimer oNext;
    oNext.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { bNext = true; });
    oNext.Start(30);
    WaitFor(sWhat, [&] { return std::exchange(bNext, false) && oCondition(); });
  }
  static std::string Heading(int iColumn) {
    return "#tabSysInfo tr:first-child > :nth-child(" + std::to_string(iColumn) + ")";
  }
  std::shared_ptr<TestView> View = std::make_shared<TestView>();
};

TEST_F(ListsTest, HeadingsSortNumbersAsNumbersAndGoBackToTheOrderRead) {
  ShowView();
  for (const char* sNames : {"adam Zoe Eve Bea 2", "Eve Zoe adam Bea 2", "Zoe adam Eve Bea 2"}) {
    ClickOn(Front(), Heading(1));
    WaitForNames(sNames);
    Press("ctrl+a");
  }
  ExpectLiveEqualsReplica(Front());
}

TEST_F(ListsTest, TheKeyboardSortsAndASelectionIsCopiedAsASpreadsheetTakesIt) {
  ShowView();
  Ask(Front(), "document.querySelector('" + Heading(2) + " button').focus()");
  Press("space");
  WaitForNames("adam Bea 2 Eve Zoe");
  Press("Return");
  WaitForNames("Zoe Eve Bea 2 adam");
  Press("Tab Return");
  WaitForNames("Zoe Eve Bea 2 adam");  // remarks "a b", "x", "y", and none last
  // The control reads what it has written, in its order.
  EXPECT_EQ(ByID(Front(), "tabSysInfo").tBodies(0)->rows(2)->cells(1)->innerText(), "Zoe");
  Press("ctrl+a ctrl+c");
  const std::string sRows = "10\tZoe\ta b\n100.5\tEve\tx\nn/a\tBea 2\ty\n9\tadam\t \n";
  WaitFor("the copy", [&] { return Clipboard() == "ID\tNAME\tREMARK\n" + sRows; });
}

// Most texts are sorted by bytes. Nobody can tell.
TEST_F(ListsTest, TextsAreInTheOrderOfTheUsersLanguage) {
  const std::vector<std::string> sParts = {
      "a",  "B",  "ch", "cH", "dz",       "'",        "-",        " ", "_",        "0", "007",
      "10", "99", "1e", ".",  "\xC3\xA4", "\xC3\x9F", "\xD0\xAF", "i", "\xC4\xB0", "z", std::string(90, '8')};
  View->Rows.clear();
  for (std::size_t i = 0, iNext = 1; i < 190; ++i) {
    std::string sName = "x";
    for (std::size_t iPart = 0; iPart < 1 + i % 5; ++iPart)
      sName += sParts[(iNext = iNext * 75 % 65537) % sParts.size()];
    View->Rows.push_back({std::to_string(i), sName, sName + std::string(i, 'q')});
  }
  View->BlockSize = 190;
  ShowView();
  const auto Numbers = [this](const std::string& sArrange) {
    return Ask(Front(),
               "[...document.querySelectorAll('#tabSysInfo tr')].slice(2).map(o => [...o.cells].map(c => "
               "c.textContent.trim()))" +
                   sArrange + ".map(s => s[0]).join(' ')");
  };
  WaitForPage("the rows", [&] { return Numbers(".slice(189)") == "189"; });
  for (const int iColumn : {2, 3}) {
    const std::string sCompare =
        "new Intl.Collator(new Intl.Locale(new Intl.Collator().resolvedOptions().locale).baseName, "
        "{numeric: true, sensitivity: 'base'}).compare";
    const std::string sText = "[" + std::to_string(iColumn - 1) + "]";
    const std::string sByNumber = ".sort((s, o) => s[0] - o[0])";
    for (const char* sSign : {"", "-"}) {
      const std::string sSorted =
          Numbers(sByNumber + ".sort((s, o) => " + sSign + sCompare + "(s" + sText + ", o" + sText + "))");
      ClickOn(Front(), Heading(iColumn));
      WaitForPage("the order", [&] { return Numbers("") == sSorted; });
    }
  }
}

TEST_F(ListsTest, WhatIsExportedIsWhatIsSeen) {
  ShowView();
  ClickOn(Front(), Heading(2));
  WaitForNames("adam Bea 2 Eve Zoe");
  ClickOn(Front(), ".zelListFilter");
  Press("e");
  WaitForNames("Bea 2 Eve Zoe");
  const std::filesystem::path oFile = Folder / "rows.csv";
  InDialog([&](wxDialog& oDialog) { oDialog.EndModal(wxID_OK); },
           [&](wxDialog& oDialog) { dynamic_cast<wxFileDialog&>(oDialog).SetPath(oFile.string()); });
  const auto Choose = [this](const std::string& sKeys) {
    ClickOn(Front(), ".zelExport");
    WaitForPage("the menu", [this] { return Ask(Front(), "document.querySelectorAll('.zelMenuItem').length") == "5"; });
    Press(sKeys);
  };
  Choose("Down Return");
  WaitFor("the file", [&] { return std::filesystem::exists(oFile); });
  EXPECT_EQ(ReadFile(oFile.string()), "ID,NAME,REMARK\r\nn/a,Bea 2,y\r\n100.5,Eve,x\r\n10,Zoe,a\tb\r\n");
  Choose("Return");
  WaitFor("the copy", [&] { return Clipboard() == "ID\tNAME\tREMARK\nn/a\tBea 2\ty\n100.5\tEve\tx\n10\tZoe\ta b\n"; });
}

TEST_F(ListsTest, EnterSortsAlsoWhereItOpensViews) {
  Panel->Browser().PageSysInfos()->Show(Recorded::OpenRecording(ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json"));
  Front().Focus();
  Ask(Front(), "document.querySelector('#tabSysInfos th button').focus()");
  Press("Return");
  WaitForPage("the order", [this] { return Ask(Front(), "document.querySelectorAll('[aria-sort]').length") == "1"; });
}

TEST_F(ListsTest, TheFilterKeepsRowsThatMatchAndThoseReadLater) {
  View->BlockSize = 3;
  ShowView();
  ClickOn(Front(), Heading(2));
  WaitForNames("adam Eve Zoe");
  Press("ctrl+f a");
  WaitForNames("adam Zoe");
  ClickOn(Front(), "btnReadMore");
  WaitForNames("adam Bea 2 Zoe");
  Press("ctrl+f B e a space 2");
  WaitForNames("Bea 2");
  EXPECT_EQ(Count(), "1 of 4");
  Press("Escape");
  WaitForNames("adam Bea 2 Eve Zoe");
  ClickOn(Front(), Heading(2));
  ClickOn(Front(), Heading(2));
  WaitForNames("Zoe adam Eve Bea 2");
  ExpectLiveEqualsReplica(Front());
  // With nothing to empty it leaves the page.
  const DesktopWebBrowser& oPage = Front();
  Press("ctrl+f Escape");
  WaitFor("the page to close", [&oPage] { return !oPage.IsVisible(); });
}

TEST_F(ListsTest, AListShownAgainBeginsUnsortedAndUnfiltered) {
  ShowView();
  const std::string sLoad = Ask(Front(), "performance.timeOrigin");
  for (int i = 0; i < 2; ++i) {
    ClickOn(Front(), Heading(2));
    Press("ctrl+f a");
    WaitForNames("adam Bea 2 Zoe");
    ShowView();
    WaitForNames("Zoe adam Eve Bea 2");
    EXPECT_EQ(Ask(Front(), "document.querySelectorAll('.zelListBar, [aria-sort]').length"), "1");
    ExpectLiveEqualsReplica(Front());
  }
  Press("ctrl+f e");
  WaitForNames("Zoe Eve Bea 2");
  EXPECT_EQ(Ask(Front(), "performance.timeOrigin"), sLoad);
}

// Some hundred rows have elements, wherever one looks, and nobody can tell.
TEST_F(ListsTest, OfALongListOnlyWhatIsNearTheScreenIsMade) {
  View->Rows.clear();
  for (int i = 0; i < 7000; ++i) View->Rows.push_back({std::to_string(i), "name " + std::to_string(i % 3), "r"});
  View->Rows[5000] = {"5000", "a\x7f<b>\"'\\&", std::string(1000, 'w') + "\xFF\n"};
  View->Rows[5001] = {"5001", "<i>\"'\\&\xD7\xA9\xE2\x80\xAE\xFF", "(null)"};
  View->Rows[6001] = {"6001", std::string("nul\0x", 5), std::string(1'000'000, 'M')};
  View->BlockSize = 7000;
  ShowView();
  const auto Made = [this] {
    return std::stoi(Ask(Front(), "document.querySelectorAll('#tabSysInfo td').length")) / 3;
  };
  WaitForPage("rows", [&] { return Made() > 30; });
  EXPECT_LT(Made(), 300);
  EXPECT_EQ(Ask(Front(), "document.getElementById('tabSysInfo').ariaRowCount"), "7001");
  EXPECT_EQ(Ask(Front(), "document.querySelector('#tabSysInfo tr').ariaRowIndex"), "1");
  Press("ctrl+a ctrl+c");
  WaitFor("the copy", [this] { return Clipboard().starts_with("ID\tNAME\tREMARK\n0\tname 0\tr\n1\t"); });
  EXPECT_EQ(std::ranges::count(Clipboard(), '\n'), 7001);
  EXPECT_TRUE(Clipboard().ends_with("\n6999\tname 0\tr\n"));
  EXPECT_NE(Clipboard().find("\n5001\t<i>\"'\\&\xD7\xA9\xE2\x80\xAE\xEF\xBF\xBD\t\n"), std::string::npos);

  // The row is found by what it begins with, a click in it and a write to it are its own.
  const auto WaitForFocus = [this](const std::string& sRow) {
    WaitForPage(sRow, [&] { return Ask(Front(), "document.activeElement.cells?.[0].textContent") == sRow; });
  };
  ClickOn(Front(), "txtFormFooter");
  Press("5 0 0 2");
  WaitForFocus("5002");
  EXPECT_EQ(Ask(Front(), "document.activeElement.ariaRowIndex"), "5004");
  EXPECT_LT(Made(), 300);
  Press("Up");
  WaitForFocus("5001");
  ClickOn(Front(), "tr:focus > td:nth-child(2)");
  Element& oCell = *Front().Document()->activeElement();
  EXPECT_EQ(oCell.previousElementSibling()->innerText(), "5001");
  oCell.innerText("written");
  ExpectLiveEqualsReplica(Front());
  WaitForPage("the write", [this] { return Names().find("written") != std::string::npos; });
  for (const auto& [sKey, sRow] : {std::pair("End", "6999"), {"Page_Up", ""}, {"Home", "0"}}) {
    Press(sKey);
    if (*sRow != 0) WaitForFocus(sRow);
  }

  ClickOn(Front(), Heading(2));
  WaitForPage("the order", [this] { return Names().starts_with("a\x7f<b>\"'\\& name 0"); });
  Press("ctrl+f n a m e space 0");
  WaitForPage("the filter", [this] { return Count().starts_with("2333 of") || Count().starts_with("2,333 of"); });
  Press("Down End");
  WaitForFocus("6999");
  EXPECT_LT(std::stod(Ask(Front(), "document.querySelector('.zelListRuler').getBoundingClientRect().bottom")), -1000);
  // Other rows are seen from the first one on.
  Press("ctrl+f BackSpace 1");
  WaitForPage("the first", [&] {
    return std::stod(Ask(Front(), "document.querySelector('.zelListRuler').getBoundingClientRect().bottom")) > 0;
  });
  Press("ctrl+f Escape");
  ClickOn(Front(), Heading(2));
  ClickOn(Front(), Heading(2));
  WaitForPage("the order read", [this] { return Names().starts_with("name 0 name 1 name 2"); });
  ExpectLiveEqualsReplica(Front());
}

// Rows that have links, with ids to know them by.
TEST_F(ListsTest, ManyRowsWithLinksAreShownFilteredClickedAndCopied) {
  Testing::Changes changes;
  for (int i = 100; i < 600; ++i) {
    changes.push_back("SysInfos.- = {\"Index\": " + std::to_string(i) + ", \"Name\": \"VIEW" + std::to_string(i) +
                      "\", \"Description\": \"text\", \"IsRecord\": false, \"Columns\": [], \"Rows\": []}");
  }
  Panel->Browser().PageSysInfos()->Show(std::make_shared<Testing::ChangedRecording>("demo", changes));
  Front().Focus();
  const auto Seen = [this] {
    return Ask(Front(),
               "[...document.querySelectorAll('#tabSysInfos td:first-child')]"
               ".filter(o => o.getClientRects().length > 0 && o.closest('tr[aria-hidden]') === null)"
               ".map(o => o.textContent).join(' ')");
  };
  WaitForPage("few of them", [&] { return std::ranges::count(Seen(), ' ') < 150; });
  Press("ctrl+f V I E W 5 9 9");
  WaitForPage("the only one", [&] { return Seen() == "VIEW599"; });
  ExpectLiveEqualsReplica(Front());
  Element& oSection = *ByID(Front(), "tabSysInfos").tBodies(0);
  Front().Document()->body()->appendChild(oSection.cloneNode(true));
  ExpectLiveEqualsReplica(Front());
  ClickOn(Front(), "#tabSysInfos tr[data-zel-row] a");
  WaitFor("the view",
          [this] { return ByID(Front(), "txtFormTitle").innerText().find("VIEW599") != std::string::npos; });
}

/// Sessions of which every third does something.
class TestSessions : public ZELLib3::Sessions {
 public:
  ZELLib3::Integer Count() const override { return 300; }
  std::shared_ptr<ZELLib3::Session> Item(ZELLib3::Integer iIndex) const override {
    class Session : public ZELLib3::Session {
     public:
      explicit Session(int iNumber) : m_iNumber(iNumber) {}
      ZELLib3::Long Index() const override { return m_iNumber; }
      std::string Name() const override { return "S" + std::to_string(m_iNumber); }
      std::optional<bool> IsActive() const override { return m_iNumber % 3 == 0; }
      std::string Detail() const override { return "SELECT " + std::to_string(m_iNumber); }

     private:
      int m_iNumber;
    };
    return std::make_shared<Session>(int{iIndex});
  }
};

TEST_F(ListsTest, SessionsThatDoNothingCanBeLeftOutAndWhatOthersDoIsShown) {
  struct TestDatabase : ZELLib3::Database {
    std::shared_ptr<ZELLib3::Sessions> Sessions() override { return std::make_shared<TestSessions>(); }
  };
  Panel->Browser().PageSessions()->Show(std::make_shared<TestDatabase>());
  Front().Focus();
  const auto First = [this] { return Ask(Front(), "document.querySelector('[data-zel-row] > th')?.textContent"); };
  WaitForPage("the sessions", [&] { return First() == "S1"; });
  ClickOn(Front(), ".zelListOnly");
  WaitForPage("the active ones", [&] { return First() == "S3" && Count() == "100 of 300"; });
  Press("Tab Down Down");
  WaitForPage("what the second does",
              [this] { return Ask(Front(), "document.querySelector('.zelListDetail')?.textContent") == "SELECT 6"; });
  ExpectLiveEqualsReplica(Front());
}

// More rows than a page is high enough for. They are evenly spaced to the end, and a
// step of the wheel is the same everywhere.
TEST_F(ListsTest, AListIsHigherThanAPage) {
  ShowView();
  WaitForNames("Zoe adam Eve Bea 2");
  Ask(Front(), R"((() => {
    const template = document.querySelector('#tabSysInfo tr[style*="none"]');
    for (let row = 0; row < 400; ++row) {
      const texts = [1e6 + row * 5000 * 4, 5000, '', '9999999', '', ''];
      for (let i = 0; i < 5000; ++i) texts.push(row * 5000 + i, 'n', '');
      const detail = texts.join('\x7f');
      template.dispatchEvent(new CustomEvent('zelrows', { bubbles: true, cancelable: true, detail }));
    }
  })())");
  const auto Rows = [this](const std::string& sOf) {
    return Ask(
        Front(),
        "(() => { const rows = [...document.querySelectorAll('#tabSysInfo tr[data-zel-row]')]"
        ".filter(o => o.getBoundingClientRect().top > 50 && o.getBoundingClientRect().bottom < innerHeight - 50);"
        "const Top = o => o.getBoundingClientRect().top; return rows.length > 9 ? " +
            sOf + " : ''; })()");
  };
  WaitForPage("the rows",
              [this] { return Ask(Front(), "document.getElementById('tabSysInfo').ariaRowCount") == "2000005"; });
  ClickOn(Front(), "txtFormFooter");
  Press("End");
  WaitForPage("the end", [this] { return Ask(Front(), "document.activeElement.cells?.[0].textContent") == "1999999"; });
  const std::string sSpaces = "new Set(rows.slice(1).map((o, i) => Top(o) - Top(rows[i]))).size";
  const std::string sPlace = "Number(rows[0].cells[0].textContent) * (Top(rows[1]) - Top(rows[0])) - Top(rows[0])";
  EXPECT_EQ(Rows(sSpaces), "1");
  for (const char* sPart : {"0.5", "0.3"}) {
    Ask(Front(), "scrollTo(0, document.documentElement.scrollHeight * " + std::string(sPart) + ")");
    WaitForPage("the middle", [&] { return Rows(sSpaces) == "1"; });
    const double dPlace = std::stod(Rows(sPlace));
    for (int i = 0; i < 20; ++i) Ask(Front(), "scrollBy(0, 53); dispatchEvent(new Event('scroll'))");
    WaitForPage("the steps", [&] { return std::abs(std::stod(Rows(sPlace)) - dPlace - 20 * 53) < 1; });
  }
}

TEST_F(ListsTest, EscapeAndClosingTheWindowEndReading) {
  View->Rows.clear();
  for (int i = 0; i < 200'000; ++i) View->Rows.push_back({std::to_string(i), "n", "r"});
  ShowView();
  const auto ExpectReadTo = [this](int iLeast) {
    WaitFor("the end",
            [&] { return View->Delivered >= iLeast && ByID(Front(), "btnReadAll").className() == "zelBtnEmph"; });
    EXPECT_LT(View->Delivered, 200'000);
    // What was read stays; the headings are a row, too.
    const std::string sRows = std::to_string(View->Delivered + 1);
    WaitForPage("the rows read",
                [&] { return Ask(Front(), "document.getElementById('tabSysInfo').ariaRowCount") == sRows; });
  };
  // Also from a search field that Escape would empty.
  Press("ctrl+f n");
  WaitForPage("the filter", [this] { return !Count().empty(); });
  View->OnBlock = [this] {
    // Without waiting, which would pump messages in the middle of a block.
    if (View->Delivered == 5000) Begin("xdotool key Escape");
  };
  Panel->Browser().PageSysInfo()->Command(3);
  ExpectReadTo(5000);
  EXPECT_EQ(Ask(Front(), "document.querySelector('input[type=search]').value"), "n");
  const int iStop = View->Delivered + 5000;
  View->OnBlock = [=, this] {
    if (View->Delivered == iStop) wxTheApp->CallAfter([this] { ClickOn(Front(), "btnStop"); });
  };
  ClickOn(Front(), "btnReadAll");
  ExpectReadTo(iStop);

  bool bClosed = false;
  Frame->Bind(wxEVT_CLOSE_WINDOW, [&](wxCloseEvent&) { bClosed = true; });
  const int iEnd = View->Delivered + 5000;
  View->OnBlock = [=, this] {
    if (View->Delivered == iEnd) wxTheApp->CallAfter([this] { Frame->Close(); });
  };
  ClickOn(Front(), "btnReadAll");
  WaitFor("the close", [&] { return bClosed; });
  EXPECT_EQ(View->Delivered, iEnd);
}

}  // namespace
}  // namespace ZELWbr3::Desktop
