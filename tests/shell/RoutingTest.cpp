// Clicks and keys on their way to the page in front.

#include "tests/support/Shown.h"
#include "tests/support/TestPage.h"
#include "zelwbr3/framework/PageDefault.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ZELWbr3::Testing {

namespace {

class RoutingTest : public testing::Test, public Shown {
 protected:
  RoutingTest() : Shown("") {
    for (const char* sName : {"Test", "Other"}) {
      PageFile(sName,
               "<a id=link href=x><b id=inside>x</b></a><a id=second href=y></a><a href=z>none</a><input id=field>");
    }
    Browser->Show(Own, 1);
    Quiet();
  }

  std::shared_ptr<TestPage> ShowOther(int iFrame) {
    const auto oOther = std::make_shared<TestPage>(*this, "Other", iFrame);
    Browser->Show(oOther, iFrame);
    Quiet();
    return oOther;
  }

  std::shared_ptr<TestPage> Own = std::make_shared<TestPage>(*this);
};

}  // namespace

TEST_F(RoutingTest, AKeyThatThePageTakesIsKeptFromTheBrowser) {
  Focus("link");
  bool bTakes = true;
  WindowEvent oSeen;
  Own->OnKey = [&](Long& lKeyCode) {
    EXPECT_FALSE(Platform.FrontFrame().Key(27));  // dropped, and gone again as the document's event
    oSeen = *Own->Document()->parentWindow().event();
    lKeyCode = 99;  // the page's own copy
    return bTakes;
  };
  EXPECT_TRUE(Key(13));
  EXPECT_EQ(oSeen.keyCode, 13);
  EXPECT_EQ(Lines(), "Test.Key 13 on link\n");
  bTakes = false;
  EXPECT_FALSE(Key(13));
  EXPECT_EQ(Lines(), "Test.Key 13 on link\nTest.Click link\n");
  EXPECT_FALSE(Key(65));
  Focus("field");
  Quiet();
  EXPECT_FALSE(Key(32));  // a blank in a text field
  EXPECT_EQ(Lines(), "Test.Key 32 on field\n");
}

TEST_F(RoutingTest, EventsThatArriveWhileOneIsHandledAreDropped) {
  int iDepth = 0;
  Own->OnClick = [&](const std::string&) {
    if (iDepth++ == 0) {
      Platform.FrontFrame().Click("second");
      EXPECT_FALSE(Platform.FrontFrame().Key(27));
      const auto oOther = std::make_shared<TestPage>(*this, "Other", 2);
      Browser->Show(oOther, 2);  // the lock is the control's, not the frame's
      Platform.FrontFrame().Click("link");
    }
    return true;
  };
  Click("link");
  EXPECT_EQ(Lines(), "Test.Click link\nOther.Fill\npage Other\n");
  Click("link");
  EXPECT_EQ(Lines(), "Other.Click link\n");
}

TEST_F(RoutingTest, APagesErrorGoesToTheTraceAndFreesTheNextEvent) {
  Own->OnClick = [](const std::string&) -> bool { throw std::runtime_error("click failed"); };
  Own->OnKey = [](Long&) -> bool { throw std::out_of_range("key failed"); };
  Click("link");
  EXPECT_FALSE(Key(27));
  Click("second");
  EXPECT_EQ(Lines(),
            "Test.Click link\ntrace: A document event failed: click failed\nTest.Key 27 on link\ntrace: A document "
            "event failed: key failed\nTest.Click second\ntrace: A document event failed: click failed\n");
}

TEST_F(RoutingTest, OnlyTheFrameInFrontIsHeard) {
  const auto oOther = ShowOther(2);
  Platform.Frame(1).Click("link");
  EXPECT_FALSE(Platform.Frame(1).Key(27));
  EXPECT_EQ(Lines(), "");
  Browser->ShowOnTop(1);
  Quiet();
  Platform.Frame(1).Click("link");
  EXPECT_EQ(Lines(), "Test.Click link\n");

  Browser->Clear(1);  // a document without a page
  Quiet();
  Platform.Frame(1).Click("link");
  EXPECT_FALSE(Key(27));
  EXPECT_EQ(Lines(), "");
}

TEST_F(RoutingTest, AReloadIsBegunAndEndedOnce) {
  Own->BeginReload();
  Own->BeginReload();
  Browser->Refresh(1);
  Settle();
  Browser->Refresh(1);
  Settle();
  EXPECT_EQ(Lines(), "begin\nTest.Fill\npage Test\ncomplete\nTest.Fill\npage Test\n");
}

TEST_F(RoutingTest, TheDefaultPageTellsItsClicksAndReloadsOnF5) {
  PageFile("Default", "<a id=link>x</a>");
  const auto oPage = Browser->PageDefault();
  const ScopedConnection oConnection = oPage->Click.Connect([this](const std::string& sID) { Line("Click " + sID); });
  oPage->Show();
  Quiet();
  EXPECT_FALSE(oPage->HandleOnClick(""));
  Click("link");
  EXPECT_EQ(Lines(), "Click link\n");
  EXPECT_FALSE(Key(27));
  EXPECT_TRUE(Key(116));
  EXPECT_EQ(Lines(), "page Default\n");
  EXPECT_EQ(oPage->Commandlist(), nullptr);
}

}  // namespace ZELWbr3::Testing
