// The control's showing, waiting and navigating, at the doors of the platform.

#include "tests/shell/RecordingPlatform.h"
#include "tests/support/TestPage.h"
#include "zelwbr3/framework/PageDefault.h"
#include "zelwbr3/pages/main/PageMain.h"
#include "zelwbr3/shell/Browser.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ZELWbr3::Testing {

namespace {

class NavigationTest : public testing::Test, public Story {
 protected:
  NavigationTest() {
    Control.HTMLPath("/pages");
    m_oComplete =
        Control.PageComplete.Connect([this](const std::shared_ptr<Page>& oPage) { Line("page " + oPage->Name()); });
  }

  std::shared_ptr<TestPage> MakePage(const char* sName = "Test", int iFrame = 1) {
    return std::make_shared<TestPage>(*this, sName, iFrame);
  }
  void Show(const std::shared_ptr<TestPage>& oPage) { Control.Show(oPage, oPage->WebBrowser()); }
  /// Queues what a browser reports of one navigation.
  void Loads(int iFrame) {
    auto& oBrowser = *Platform.Frames[iFrame];
    Platform.Queue.Post([&oBrowser] { oBrowser.Events.BeforeNavigate(true); });
    Platform.Queue.Post([&, this] {
      Line("arrived");
      oBrowser.Events.NavigateComplete();
    });
    Platform.Queue.Post([&oBrowser] {
      oBrowser.Load();
      oBrowser.Events.DocumentComplete(true);
    });
  }
  RecordingPlatform Platform{*this};
  Browser Control{Platform};

 private:
  ScopedConnection m_oComplete;
};

// What only pages may do is out of a host's reach.
static_assert(!std::is_convertible_v<Browser&, PageSite&> && !std::is_convertible_v<Browser&, WebBrowserEvents&>);

}  // namespace

TEST_F(NavigationTest, ShowTakesItsStepsInOrder) {
  const auto oFirst = MakePage("First");
  Loads(1);
  Platform.Queue.Post([this] { Line("a later message"); });
  Platform.Frames[1]->Unsettled = 2;
  EXPECT_EQ(Control.Show(oFirst, 1), 1);
  EXPECT_EQ(Lines(),
            "Navigate 1 /pages\\First.htm flags 14\narrived\nshow 1\nFirst.Fill\npage First\nnot settled 1\na later "
            "message\nnot settled 1\n");
  EXPECT_EQ(Control.ActPage(), 1);
  EXPECT_GT(Platform.Frames[1]->Flushes, 0);

  // The same page again is not hidden; another one in its frame hides it.
  Loads(1);
  oFirst->Show();
  EXPECT_EQ(Lines(), "Navigate 1 /pages\\First.htm flags 14\narrived\nFirst.Fill\npage First\n");
  Loads(1);
  Show(MakePage("Second"));
  EXPECT_TRUE(Lines().starts_with("First.Hide\n"));
  EXPECT_EQ(oFirst->Document(), nullptr);

  // Another frame comes to the front as soon as its document arrives.
  Loads(2);
  Show(MakePage("Third", 2));
  EXPECT_EQ(Lines(), "Navigate 2 /pages\\Third.htm flags 14\narrived\nhide 1\nshow 2\nThird.Fill\npage Third\n");
}

TEST_F(NavigationTest, AnyFramesArrivalEndsTheFirstWaitOnly) {
  auto& oBrowser = *Platform.Frames[1];
  Platform.Queue.Post([&] { Platform.Frames[3]->Events.NavigateComplete(); });  // a sub-frame, or another frame
  Platform.Queue.Post([&] {
    oBrowser.Load();
    oBrowser.Events.DocumentComplete(false);  // a sub-frame's document is none of the page's
  });
  const auto oPage = MakePage();
  EXPECT_THROW(Show(oPage), WaitError);
  EXPECT_EQ(Lines(), "Navigate 1 /pages\\Test.htm flags 14\nshow 1\n");
  EXPECT_EQ(Control.ActPage(), 0);

  oBrowser.Events.BeforeNavigate(false);
  EXPECT_FALSE(oPage->NoEvents());
  oBrowser.Events.BeforeNavigate(true);
  EXPECT_TRUE(oPage->NoEvents());
  oBrowser.Loaded = nullptr;  // a document that never came still ends the silence
  oBrowser.Events.DocumentComplete(true);
  EXPECT_FALSE(oPage->NoEvents());
  EXPECT_EQ(Lines(), "");
}

TEST_F(NavigationTest, AShowInsideAShowSatisfiesBoth) {
  const auto oInner = MakePage("Inner", 2);
  const auto oOuter = MakePage("Outer");
  Platform.Queue.Post([&] {
    Loads(2);
    Loads(1);
    Show(oInner);
    Line("inner shown");
  });
  Control.Show(oOuter, 1);
  Platform.Queue.Poll();
  EXPECT_EQ(Lines(),
            "Navigate 1 /pages\\Outer.htm flags 14\nNavigate 2 /pages\\Inner.htm flags 14\narrived\nshow "
            "2\nInner.Fill\npage Inner\ninner shown\nhide 2\nshow 1\narrived\nOuter.Fill\npage Outer\n");
}

TEST_F(NavigationTest, TheDeathOfABrowserEndsEveryWait) {
  const auto oInner = MakePage("Inner", 2);
  const auto oOuter = MakePage("Outer");
  std::string sInner;
  Platform.Queue.Post([&] {
    Platform.Queue.Post([&] { Platform.Frames[2]->Events.ProcessTerminated("out of memory"); });
    Platform.Queue.Post([] { FAIL() << "the wait went on"; });
    try {
      Show(oInner);
    } catch (const WaitError& oError) {
      sInner = oError.what();
    }
  });
  EXPECT_THROW(Show(oOuter), WaitError);
  EXPECT_EQ(sInner, "The browser's process ended: out of memory");
}

TEST_F(NavigationTest, EmptyingTheFrameEndsTheWaitForItsPage) {
  const auto oPage = MakePage();
  Platform.Queue.Post([&] { Control.Clear(1); });
  Platform.Queue.Post([&] { Platform.Frames[1]->Events.NavigateComplete(); });
  Platform.Queue.Post([] { FAIL() << "the wait went on"; });
  try {
    Show(oPage);
    FAIL() << "shown";
  } catch (const WaitError& oError) {
    EXPECT_STREQ(oError.what(), "The frame was emptied before the page Test was complete");
  }
  EXPECT_EQ(Lines(), "Navigate 1 /pages\\Test.htm flags 14\nTest.Hide\nNavigate 1 about:blank flags 0\nshow 1\n");
}

TEST_F(NavigationTest, AFillThatFailsStillCompletesThePage) {
  const auto oPage = MakePage();
  oPage->OnFill = [] { throw std::runtime_error("no such luck"); };
  Loads(1);
  Show(oPage);
  EXPECT_EQ(Lines(),
            "Navigate 1 /pages\\Test.htm flags 14\narrived\nshow 1\nTest.Fill\nTrace Filling the page Test failed: no "
            "such luck\npage Test\n");
}

TEST_F(NavigationTest, NavigatesWithAndWithoutAPage) {
  const auto oPage = MakePage();
  Control.HTMLPath("/pages\\");  // the separator is added all the same
  Loads(1);
  Show(oPage);
  EXPECT_TRUE(Lines().starts_with("Navigate 1 /pages\\\\Test.htm flags 14\n"));
  Control.Refresh(1);
  EXPECT_EQ(Lines(), "Navigate 1 /pages\\\\Test.htm flags 14\n");
  Control.Navigate("http://127.0.0.1/", 1);
  EXPECT_EQ(Lines(), "Test.Hide\nNavigate 1 http://127.0.0.1/ flags 0\n");
  Control.Refresh(1);
  EXPECT_EQ(Lines(), "Navigate 1 http://127.0.0.1/ flags 14\n");
  Control.Clear(1);
  EXPECT_EQ(Lines(), "Navigate 1 about:blank flags 0\n");
  Control.Navigate("", 1);
  Control.Refresh(3);  // never navigated
  EXPECT_EQ(Lines(), "");
}

TEST_F(NavigationTest, RefusesFramesThatAreNotThere) {
  const auto oPage = MakePage();
  for (const int iFrame : {-1, 4, 1'000'000}) {
    EXPECT_THROW(Control.Show(oPage, iFrame), std::out_of_range);
    EXPECT_THROW(Control.ShowOnTop(iFrame), std::out_of_range);
    EXPECT_THROW(Control.Navigate("x", iFrame), std::out_of_range);
    EXPECT_THROW(Control.Refresh(iFrame), std::out_of_range);
    EXPECT_THROW(Control.Clear(iFrame), std::out_of_range);
  }
  EXPECT_THROW(Control.Show(nullptr, 1), std::invalid_argument);
  EXPECT_THROW(oPage->Show(), std::logic_error);  // nobody's page yet
  EXPECT_EQ(Lines(), "");
  EXPECT_EQ(Control.VisibleDocument(), nullptr);
  Control.Clear(3);  // has no name, and is there
}

TEST_F(NavigationTest, CleanUpEmptiesTheNamedFramesAndForgetsThePages) {
  const auto oMain = Control.PageMain();
  EXPECT_EQ(Control.PageMain(), oMain);
  EXPECT_EQ(Control.ActPageObj(), nullptr);
  const auto oOwn = MakePage("Own", 3);  // a page of the host's own
  Loads(3);
  Show(oOwn);
  Loads(1);
  Control.PageDefault()->Show();
  EXPECT_EQ(Control.ActPageObj(), Control.PageDefault());
  static_cast<void>(Lines());
  Control.CleanUp();
  EXPECT_EQ(Lines(),
            "Navigate 0 about:blank flags 0\nNavigate 1 about:blank flags 0\nNavigate 2 about:blank flags 0\n");
  EXPECT_EQ(Control.ActPage(), 1);
  EXPECT_EQ(Control.ActPageObj(), nullptr);
  EXPECT_THROW(oMain->Show(), std::logic_error);
  EXPECT_NE(Control.PageMain(), oMain);
  Control.CleanUp();
  Control.CleanUp();
}

}  // namespace ZELWbr3::Testing
