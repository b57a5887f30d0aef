// Hosts take the control away at the most awkward moments. With the address
// sanitizer these tests also find what is touched afterwards.

#include "tests/support/Shown.h"
#include "tests/support/TestPage.h"
#include "zelwbr3/shell/Pages.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ZELWbr3 {

using Testing::TestPage;

namespace {

using Lines = std::vector<std::string>;

class LifetimeTest : public Testing::Shown {
 protected:
  LifetimeTest() { PageFile("Test", "<a id=link href=x>x</a><a id=guicmd00065></a>"); }

  /// Shows a page that nobody but the control holds.
  std::weak_ptr<TestPage> ShowOwn() {
    auto oPage = std::make_shared<TestPage>(Log);
    Control->Show(oPage, 1);
    Log.clear();
    return oPage;
  }
  /// Shows an instance whose data area is full: the main page has a link then.
  void ShowFull() {
    Control->HTMLPath(ZELWBR3_SOURCE_DIR "/html");
    Instance->State->anyAreaFull = Instance->State->dataFull = true;
    ShowMain();
  }
};

}  // namespace

TEST_F(LifetimeTest, DestroyedWhileAPageCompletes) {
  Control->HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  Connections.push_back(Control->PageComplete.Connect([this](const std::shared_ptr<Page>&) { Control.reset(); }));
  EXPECT_THROW(ShowMain(), WaitError);
  Settle();
}

TEST_F(LifetimeTest, DestroyedWhileAClickIsHandled) {
  const auto oPage = ShowOwn();
  oPage.lock()->OnClick = [&](const std::string&) -> bool {
    Control.reset();
    throw std::runtime_error("and failed as well");
  };
  Platform.FrontFrame().Click("link");
  EXPECT_TRUE(oPage.expired());
  EXPECT_EQ(Log, (Lines{"Test.Click link", "Test.CleanUp"}));
}

TEST_F(LifetimeTest, DestroyedWhileAKeyIsHandled) {
  const auto oPage = ShowOwn();
  Platform.FrontFrame().Focus("link");
  oPage.lock()->OnKey = [&](Long&) {
    Control.reset();
    return false;  // so the key would be a click on the link
  };
  EXPECT_FALSE(Platform.FrontFrame().Key(13));
  EXPECT_TRUE(oPage.expired());
}

TEST_F(LifetimeTest, DestroyedWhileItWaits) {
  auto oPage = std::make_shared<TestPage>(Log);
  Platform.MessagePump().Post([this] { Control.reset(); });
  try {
    Control->Show(oPage, 1);
    FAIL() << "shown";
  } catch (const WaitError& oError) {
    EXPECT_STREQ(oError.what(), "The control was destroyed while it waited");
  }
  EXPECT_FALSE(oPage->HasBrowser());
  EXPECT_THROW(oPage->Show(), std::logic_error);
  Settle();
}

TEST_F(LifetimeTest, DestroyedByTheCommandOfALink) {
  ShowFull();
  Connections.push_back(Control->Command.Connect([this](Long) {
    Control.reset();
    throw std::runtime_error("and failed as well");
  }));
  Platform.FrontFrame().Click("guicmd00065");
  EXPECT_EQ(Log, (Lines{"PageComplete Main", "Command 65"}));
}

TEST_F(LifetimeTest, CleanedUpByTheCommandOfALink) {
  ShowFull();
  Connections.push_back(Control->Command.Connect([this](Long) {
    Control->CleanUp();
    throw std::runtime_error("and failed as well");
  }));
  Click("guicmd00065");
  EXPECT_EQ(Commands(), "");
  Control->PageMain()->Commandlist(Commandlist);
  ShowMain();
  EXPECT_EQ(Text("txtName"), "DEMO");
  EXPECT_NE(Commands(), "");
}

TEST_F(LifetimeTest, CleanedUpWhileAReloadCompletes) {
  Control->HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  ShowMain();
  Log.clear();
  Connections.push_back(Control->PageComplete.Connect([this](const std::shared_ptr<Page>&) { Control->CleanUp(); }));
  EXPECT_TRUE(Key(116));
  EXPECT_EQ(Log, (Lines{"ActionBegin", "PageComplete Main"}));
}

TEST_F(LifetimeTest, DestroyedWhileAnErrorIsDisplayed) {
  Control->HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  Instance->Raises = {"InstanceName"};
  ExpectError("-1000 InstanceName cannot be read");
  Connections.push_back(
      Platform.MessageBox().Shown.Connect([this](const Headless::ScriptedAnswers::Box&) { Control.reset(); }));
  EXPECT_THROW(ShowMain(), WaitError);
}

TEST_F(LifetimeTest, APageOutlivesItsControl) {
  const auto oMain = Control->PageMain();
  auto oOwn = std::make_shared<TestPage>(Log);
  Control->Show(oOwn, 1);
  auto oGone = std::make_shared<TestPage>(Log, "Gone", 2);
  Control->Show(oGone, 2);
  Control->Clear(2);  // shown once, in no frame any more
  Control.reset();
  EXPECT_THROW(oMain->Show(Instance), std::logic_error);
  EXPECT_THROW(oOwn->Show(), std::logic_error);
  EXPECT_THROW(oGone->Show(), std::logic_error);
}

// Every page of the registry is of its type, has a file and a frame, and says
// so when it has no instance instead of falling over.
TEST_F(LifetimeTest, EveryPageOfTheRegistryCanBeShown) {
  Control->HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  const std::shared_ptr<Page> pages[] = {
      Control->PageDefault(),    Control->PageMain(),         Control->PageHistory(),    Control->PageHistoryItem(),
      Control->PageSysInfos(),   Control->PageSysInfo(),      Control->PageParameters(), Control->PageParameter(),
      Control->PageInfoCaches(), Control->PageInfoActivity(), Control->PageDataArea(),   Control->PageLogArea(),
      Control->PageSysDD(),      Control->PageSQLTable(),     Control->PageSessions(),   Control->PageDBAnalyzer()};
  int iType = 0;
  for (const auto& oPage : pages) {
    SCOPED_TRACE(oPage->Name());
    EXPECT_EQ(oPage->PageType(), ++iType);
    if (iType > 1) ExpectError("The page " + oPage->Name() + " has no instance to show");
    Control->Show(oPage, oPage->WebBrowser());
    EXPECT_EQ(Control->ActPage(), iType);
    EXPECT_EQ(Control->ActPageObj(), oPage);
  }
}

TEST_F(LifetimeTest, AMissingPageFileIsShownAsOneThatCannotBeRead) {
  Control->HTMLPath("/nowhere & <beyond>");
  ExpectError("The page file Main.htm has no element \"imgInstance\"");
  ShowMain();
  EXPECT_EQ(Control->VisibleDocument()->body()->innerText(),
            "Page not found/nowhere & <beyond>/Main.htm cannot be read.");
  PageFile("Other", "");
  std::filesystem::create_directory(Control->HTMLPath() + "/Main.htm");
  ExpectError("The page file Main.htm has no element \"imgInstance\"");
  ShowMain();
  EXPECT_NE(Control->VisibleDocument()->body()->innerText().find("cannot be read"), std::string::npos);
}

}  // namespace ZELWbr3
