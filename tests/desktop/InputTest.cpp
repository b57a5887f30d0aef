#include "tests/desktop/TestWindow.h"
#include "zelwbr3/dom/Window.h"

namespace ZELWbr3::Desktop {
namespace {

/// Clicks and keys as they come from the display server.
class InputTest : public TestBrowser {
 protected:
  InputTest() {
    Events.OnKey = [this] {
      Keys.push_back(Browser->Document()->parentWindow().event()->keyCode);
      return bSwallow;
    };
    Events.OnClick = [this] { Clicked.push_back(Browser->Document()->activeElement()->id()); };
  }

  void WaitForClicks(std::size_t iCount) {
    WaitFor("click " + std::to_string(iCount), [&] { return Clicked.size() >= iCount; });
  }
  void WaitForKeys(std::size_t iCount) {
    WaitFor("a key", [&] { return Keys.size() >= iCount; });
  }
  /// Gives the keyboard to the page and to an element in it.
  void Focus(const std::string& sID) {
    Browser->Focus();
    Ask(*Browser, "document.getElementById('" + sID + "').focus()");
    WaitFor("the focus", [&] { return Browser->Document()->activeElement()->id() == sID; });
  }

  std::vector<std::string> Clicked;
  std::vector<int> Keys;
  bool bSwallow = false;
};

TEST_F(InputTest, AClickIsReportedWithItsElementAndHasNoOtherEffect) {
  ShowBody(
      "<a id=\"link\" href=\"\">link</a> <a id=\"out\" href=\"Elsewhere.htm\"><b id=\"bold\">out</b></a>"
      "<table><tr><td id=\"cell\"><span id=\"span\">in a cell</span></td></tr></table>"
      "<form action=\"Elsewhere.htm\"><button id=\"button\">go</button></form><p id=\"text\">only text</p>"
      "<div id=\"tab\" tabindex=\"0\">div</div>");
  ClickOn(*Browser, "link", 2);
  ClickOn(*Browser, "link", 3);
  for (const char* sID : {"link", "bold", "span", "button", "text", "tab"}) {
    const std::size_t iBefore = Clicked.size();
    ClickOn(*Browser, sID);
    WaitForClicks(iBefore + 1);
  }
  EXPECT_EQ(Clicked, (std::vector<std::string>{"link", "out", "cell", "button", "body", "tab"}));
  EXPECT_EQ(Events.Documents, 1);
}

TEST_F(InputTest, KeysArriveOnceWithTheirClassicCodes) {
  ShowBody("<a id=\"link\" href=\"#\">link</a>");
  Focus("link");
  const std::vector<std::pair<std::string, int>> oKeys = {
      {"Escape", 27}, {"F5", 116},  {"F1", 112},    {"a", 65},     {"shift+a", 16}, {"Left", 37},    {"Up", 38},
      {"Right", 39},  {"Down", 40}, {"Delete", 46}, {"Prior", 33}, {"7", 55},       {"KP_Add", 107}, {"minus", 189}};
  for (const bool b : {true, false}) {
    bSwallow = b;
    for (const auto& [sKey, iCode] : oKeys) {
      const std::vector<int> oExpected = sKey == "shift+a" ? std::vector{16, 65} : std::vector{iCode};
      Keys.clear();
      Press(sKey);
      WaitForKeys(oExpected.size());
      // A key that comes by a second time would do so before the next one.
      EXPECT_EQ(Keys, oExpected) << sKey;
    }
  }
  EXPECT_EQ(Events.Documents, 1);
  EXPECT_TRUE(Clicked.empty());
}

TEST_F(InputTest, OnlyKeysThatAreNotSwallowedReachThePageAndTheProgram) {
  ShowBody("<input id=\"input\">");
  Focus("input");
  int iSeenByProgram = 0;
  Frame->Bind(wxEVT_CHAR_HOOK, [&](wxKeyEvent& oEvent) {
    if (oEvent.GetKeyCode() == WXK_F7) ++iSeenByProgram;
    oEvent.Skip();
  });
  bSwallow = true;
  Press("x F7");
  WaitForKeys(2);
  bSwallow = false;
  Press("y F7");
  WaitFor("the key in the program", [&] { return iSeenByProgram > 0; });
  EXPECT_EQ(iSeenByProgram, 1);
  EXPECT_EQ(Ask(*Browser, "document.getElementById('input').value"), "y");
}

TEST_F(InputTest, EnterAndSpaceClickWhatIsActive) {
  ShowBody(
      "<a id=\"link\" href=\"Elsewhere.htm\">link</a><button id=\"button\">b</button><div id=\"div\" "
      "tabindex=\"0\">d</div>"
      "<table><tr><td id=\"cell\">cell</td></tr></table>");
  for (const char* sID : {"link", "button", "div"}) {
    Focus(sID);
    for (const char* sKey : {"Return", "space", "KP_Enter"}) {
      Clicked.clear();
      Press(sKey);
      WaitForClicks(1);
      EXPECT_EQ(Clicked, std::vector<std::string>{sID}) << sKey;
    }
  }
  Clicked.clear();
  ClickOn(*Browser, "cell");
  WaitForClicks(1);
  Press("Return");
  WaitForClicks(2);
  EXPECT_EQ(Clicked, (std::vector<std::string>{"cell", "cell"})) << "the browser itself has no active cell";
  // A page that handles the key itself keeps it.
  bSwallow = true;
  Keys.clear();
  Press("Return Escape");
  WaitForKeys(2);
  EXPECT_EQ(Clicked.size(), 2u);
}

}  // namespace
}  // namespace ZELWbr3::Desktop
