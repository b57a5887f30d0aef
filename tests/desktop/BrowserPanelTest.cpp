#include "tests/desktop/TestWindow.h"
#include "zelwbr3/framework/Page.h"

#include <wx/app.h>

namespace ZELWbr3::Desktop {
namespace {

/// A page of a test's own, in the first frame.
class PageTest : public Page {
 public:
  std::string Name() const override { return "Test"; }
  Long PageType() const override { return int{zelWebBrowserPageMain}; }
  Long WebBrowser() const override { return 0; }
  void Show() { ShowInFrame(); }
  bool HandleOnClick(const std::string&) override { return true; }
  bool HandleOnKeyDown(Long& lKeyCode, Element*) override {
    Keys.push_back(lKeyCode);
    return true;
  }
  using Page::Document;

  std::function<void()> OnFill;
  std::vector<int> Keys;

 private:
  void Fill() override {
    if (OnFill) OnFill();
  }
};

class BrowserPanelTest : public TestPanel {
 protected:
  BrowserPanelTest() {
    PageFile("Test.htm", "<p id=\"p\"></p><a id=\"link\" href=\"#\">link</a>");
    Panel->Browser().HTMLPath(Folder.string());
  }

  std::shared_ptr<PageTest> Test = std::make_shared<PageTest>();
};

TEST_F(BrowserPanelTest, ShowReturnsWhenTheScreensDocumentIsFilled) {
  Test->OnFill = [&] { Test->Document()->all().item("p")->innerText("filled"); };
  EXPECT_EQ(Panel->Browser().Show(Test, 0), 0);
  EXPECT_EQ(Ask(Front(), "document.getElementById('p').textContent"), "filled");
  EXPECT_EQ(Ask(Front(), "innerWidth + ' ' + innerHeight"),
            std::to_string(Panel->GetClientSize().x) + " " + std::to_string(Panel->GetClientSize().y));
}

TEST_F(BrowserPanelTest, TheKeyboardFollowsTheFrameInFront) {
  Panel->Browser().Show(Test, 0);
  Panel->SetFocus();
  Panel->Browser().Show(Test, 1);
  WaitFor("the focus", [&] { return Front().View()->HasFocus(); });
  Press("F5");
  WaitFor("the key", [&] { return !Test->Keys.empty(); });
}

TEST_F(BrowserPanelTest, WithoutAPageTheKeysAreTheControlsOwn) {
  std::vector<std::string> oKeys;
  const auto oDown = Panel->Browser().KeyDown.Connect([&](Integer& iKey, Integer& iShift) {
    oKeys.push_back("down " + std::to_string(iKey) + " " + std::to_string(iShift));
  });
  const auto oPress =
      Panel->Browser().KeyPress.Connect([&](Integer& iKey) { oKeys.push_back("press " + std::to_string(iKey)); });
  const auto oUp = Panel->Browser().KeyUp.Connect([&](Integer& iKey, Integer& iShift) {
    oKeys.push_back("up " + std::to_string(iKey) + " " + std::to_string(iShift));
  });
  ActivateFrame();
  Panel->SetFocus();
  Press("a");
  WaitFor("the keys", [&] { return oKeys.size() >= 3; });
  EXPECT_EQ(oKeys, (std::vector<std::string>{"down 65 0", "press 97", "up 65 0"}));
}

TEST_F(BrowserPanelTest, APanelDestroyedInAWaitEndsIt) {
  wxTheApp->CallAfter([&] { Panel->Destroy(); });
  // The page outlives its control here, as one that a host holds does.
  EXPECT_THROW(Panel->Browser().Show(Test, 0), WaitError);
  WaitFor("the end of its views", [] { return WebView::Count() == 0; });
}

}  // namespace
}  // namespace ZELWbr3::Desktop
