// Hosts take the control away at the most awkward moments. With the address
// sanitizer these tests also find what is touched afterwards.

#include "tests/support/Shown.h"
#include "tests/support/TestPage.h"
#include "zelwbr3/shell/Pages.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ZELWbr3::Testing {

namespace {

/// An instance whose data area is full: the main page has a link then.
class LifetimeTest : public testing::Test, public Shown {
 protected:
  LifetimeTest() : Shown("full-data") {}

  /// Shows a page that nobody but the control holds.
  std::weak_ptr<TestPage> ShowOwn() {
    PageFile("Test", "<a id=link href=x>x</a>");
    auto oPage = std::make_shared<TestPage>(*this);
    Browser->Show(oPage, 1);
    Quiet();
    return oPage;
  }
  template <typename... Arguments>
  void On(Event<Arguments...>& oEvent, std::function<void()> oAct) {
    Connections.push_back(oEvent.Connect([oAct](const Arguments&...) { oAct(); }));
  }
  std::vector<ScopedConnection> Connections;
  std::function<void()> Destroy = [this] { Browser.reset(); };
  std::function<void()> CleanUp = [this] { Browser->CleanUp(); };
  static void Fail() { throw std::runtime_error("and failed as well"); }
};

}  // namespace

TEST_F(LifetimeTest, DestroyedWhileAPageCompletes) {
  On(Browser->PageComplete, Destroy);
  EXPECT_THROW(Show("Main"), WaitError);
  Settle();
}

TEST_F(LifetimeTest, DestroyedWhileAClickIsHandled) {
  const auto oPage = ShowOwn();
  oPage.lock()->OnClick = [&](const std::string&) {
    Destroy();
    Fail();
    return true;
  };
  Click("link");
  EXPECT_TRUE(oPage.expired());
  EXPECT_EQ(Lines(), "Test.Click link\nTest.CleanUp\n");
}

TEST_F(LifetimeTest, DestroyedWhileAKeyIsHandled) {
  const auto oPage = ShowOwn();
  Focus("link");
  oPage.lock()->OnKey = [&](Long&) {
    Destroy();
    return false;  // so the key would be a click on the link
  };
  EXPECT_FALSE(Key(13));
  EXPECT_TRUE(oPage.expired());
}

TEST_F(LifetimeTest, DestroyedWhileItWaits) {
  auto oPage = std::make_shared<TestPage>(*this);
  Platform.MessagePump().Post(Destroy);
  try {
    Browser->Show(oPage, 1);
    FAIL() << "shown";
  } catch (const WaitError& oError) {
    EXPECT_STREQ(oError.what(), "The control was destroyed while it waited");
  }
  EXPECT_FALSE(oPage->HasBrowser());
  EXPECT_THROW(oPage->Show(), std::logic_error);
  Settle();
}

TEST_F(LifetimeTest, CleanedUpThenDestroyedByTheCommandOfALink) {
  for (const auto& oAct : {CleanUp, Destroy}) {
    Show("Main");
    EXPECT_NE(Items(), "");
    Quiet();
    On(Browser->Command, [oAct] {
      oAct();
      Fail();
    });
    Click("guicmd00065");
    EXPECT_EQ(Lines(), "command 65\n");
    EXPECT_EQ(Items(), "");
    Connections.pop_back();
  }
}

TEST_F(LifetimeTest, CleanedUpWhileAReloadCompletes) {
  Show("Main");
  On(Browser->PageComplete, CleanUp);
  EXPECT_TRUE(Key(116));
  EXPECT_EQ(Lines(), "page Main\nbegin\npage Main\n");
}

TEST_F(LifetimeTest, DestroyedWhileAnErrorIsDisplayed) {
  Database->Change({R"(raises = ["InstanceName"])"});
  OnAsked = [this](const std::string&) { Destroy(); };
  EXPECT_THROW(Show("Main"), WaitError);
  EXPECT_EQ(Lines(), "box Error [exclamation ok]: -24988 SQL error -> ok\n");
}

TEST_F(LifetimeTest, APageOutlivesItsControl) {
  const auto oMain = Browser->PageMain();
  auto oOwn = std::make_shared<TestPage>(*this);
  Browser->Show(oOwn, 1);
  auto oGone = std::make_shared<TestPage>(*this, "Gone", 2);
  Browser->Show(oGone, 2);
  Browser->Clear(2);  // shown once, in no frame any more
  Destroy();
  EXPECT_THROW(oMain->Show(Database), std::logic_error);
  EXPECT_THROW(oOwn->Show(), std::logic_error);
  EXPECT_THROW(oGone->Show(), std::logic_error);
}

// Every page of the registry is of its type, has a file and a frame, and says
// so when it has no instance instead of falling over.
TEST_F(LifetimeTest, EveryPageOfTheRegistryCanBeShown) {
  const std::shared_ptr<Page> pages[] = {
      Browser->PageDefault(),    Browser->PageMain(),         Browser->PageHistory(),    Browser->PageHistoryItem(),
      Browser->PageSysInfos(),   Browser->PageSysInfo(),      Browser->PageParameters(), Browser->PageParameter(),
      Browser->PageInfoCaches(), Browser->PageInfoActivity(), Browser->PageDataArea(),   Browser->PageLogArea(),
      Browser->PageSysDD(),      Browser->PageSQLTable(),     Browser->PageSessions(),   Browser->PageDBAnalyzer()};
  int iType = 0;
  for (const auto& oPage : pages) {
    EXPECT_EQ(oPage->PageType(), ++iType);
    Browser->Show(oPage, oPage->WebBrowser());
    EXPECT_EQ(Lines(), (iType == 1 ? ""
                                   : "box Error [exclamation ok]: The page " + oPage->Name() +
                                         " has no instance to show -> ok\n") +
                           "page " + oPage->Name() + "\n");
    EXPECT_EQ(Browser->ActPage(), iType);
    EXPECT_EQ(Browser->ActPageObj(), oPage);
  }
}

TEST_F(LifetimeTest, AMissingPageFileIsShownAsOneThatCannotBeRead) {
  const std::string sTold = "page Main\n";  // the document says what is wrong
  Browser->HTMLPath("/nowhere & <beyond>");
  Show("Main");
  EXPECT_EQ(Lines() + Picture(), sTold + "Page not found\n/nowhere & <beyond>/Main.htm cannot be read.\n");
  PageFile("Other", "");
  std::filesystem::create_directory(Browser->HTMLPath() + "/Main.htm");
  Show("Main");
  EXPECT_EQ(Lines(), sTold);
  EXPECT_TRUE(Picture().ends_with("cannot be read.\n"));
}

}  // namespace ZELWbr3::Testing
