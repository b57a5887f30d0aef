// Clicks and keys on their way to the page in front.

#include "tests/support/Shown.h"
#include "tests/support/TestPage.h"
#include "zelwbr3/framework/PageDefault.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ZELWbr3 {

using Testing::TestPage;

namespace {

using Lines = std::vector<std::string>;

class RoutingTest : public Testing::Shown {
 protected:
  RoutingTest() {
    for (const char* sName : {"Test", "Other"}) {
      PageFile(sName,
               "<a id=link href=x><b id=inside>x</b></a><a id=second href=y></a><a href=z>none</a><input id=field>");
    }
    Control->Show(Own, 1);
    Log.clear();
  }

  std::shared_ptr<TestPage> ShowOther(int iFrame) {
    const auto oOther = std::make_shared<TestPage>(Log, "Other", iFrame);
    Control->Show(oOther, iFrame);
    Log.clear();
    return oOther;
  }

  std::shared_ptr<TestPage> Own = std::make_shared<TestPage>(Log);
};

}  // namespace

TEST_F(RoutingTest, AKeyThatThePageTakesIsKeptFromTheBrowser) {
  Platform.FrontFrame().Focus("link");
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
  EXPECT_EQ(Log, Lines{"Test.Key 13 on link"});
  bTakes = false;
  EXPECT_FALSE(Key(13));
  EXPECT_EQ(Log, (Lines{"Test.Key 13 on link", "Test.Key 13 on link", "Test.Click link"}));
  EXPECT_FALSE(Key(65));
  Platform.FrontFrame().Focus("field");
  Log.clear();
  EXPECT_FALSE(Key(32));  // a blank in a text field
  EXPECT_EQ(Log, Lines{"Test.Key 32 on field"});
}

TEST_F(RoutingTest, EventsThatArriveWhileOneIsHandledAreDropped) {
  int iDepth = 0;
  Own->OnClick = [&](const std::string&) {
    if (iDepth++ == 0) {
      Platform.FrontFrame().Click("second");
      EXPECT_FALSE(Platform.FrontFrame().Key(27));
      const auto oOther = std::make_shared<TestPage>(Log, "Other", 2);
      Control->Show(oOther, 2);  // the lock is the control's, not the frame's
      Platform.FrontFrame().Click("link");
    }
    return true;
  };
  Click("link");
  EXPECT_EQ(Log, (Lines{"Test.Click link", "Other.Fill", "PageComplete Other"}));
  Log.clear();
  Click("link");
  EXPECT_EQ(Log, Lines{"Other.Click link"});
}

TEST_F(RoutingTest, APagesErrorGoesToTheTraceAndFreesTheNextEvent) {
  Own->OnClick = [](const std::string&) -> bool { throw std::runtime_error("click failed"); };
  Own->OnKey = [](Long&) -> bool { throw std::out_of_range("key failed"); };
  Click("link");
  EXPECT_FALSE(Key(27));
  Click("second");
  EXPECT_EQ(Log, (Lines{"Test.Click link", "Trace A document event failed: click failed", "Test.Key 27 on link",
                        "Trace A document event failed: key failed", "Test.Click second",
                        "Trace A document event failed: click failed"}));
}

TEST_F(RoutingTest, OnlyTheFrameInFrontIsHeard) {
  const auto oOther = ShowOther(2);
  Platform.Frame(1).Click("link");
  EXPECT_FALSE(Platform.Frame(1).Key(27));
  EXPECT_TRUE(Log.empty());
  Control->ShowOnTop(1);
  Log.clear();
  Platform.Frame(1).Click("link");
  EXPECT_EQ(Log, Lines{"Test.Click link"});

  Control->Clear(1);  // a document without a page
  Log.clear();
  Platform.Frame(1).Click("link");
  EXPECT_FALSE(Key(27));
  EXPECT_TRUE(Log.empty());
}

TEST_F(RoutingTest, AReloadIsBegunAndEndedOnce) {
  Own->BeginReload();
  Own->BeginReload();
  Control->Refresh(1);
  Settle();
  Control->Refresh(1);
  Settle();
  EXPECT_EQ(Log, (Lines{"ActionBegin", "Test.Fill", "PageComplete Test", "ActionComplete false", "Test.Fill",
                        "PageComplete Test"}));
}

TEST_F(RoutingTest, TheDefaultPageTellsItsClicksAndReloadsOnF5) {
  PageFile("Default", "<a id=link>x</a>");
  const auto oPage = Control->PageDefault();
  const auto oConnection = oPage->Click.Connect([this](const std::string& sID) { Log.push_back("Click " + sID); });
  oPage->Show();
  Log.clear();
  EXPECT_FALSE(oPage->HandleOnClick(""));
  Click("link");
  EXPECT_EQ(Log, Lines{"Click link"});
  EXPECT_FALSE(Key(27));
  EXPECT_TRUE(Key(116));
  EXPECT_EQ(Log, (Lines{"Click link", "PageComplete Default"}));
  EXPECT_EQ(oPage->Commandlist(), nullptr);
}

}  // namespace ZELWbr3
